#ifndef QOR_CLI_ENGINE_PATH_NODE_H
#define QOR_CLI_ENGINE_PATH_NODE_H

#include <string>
#include <vector>

#include "commands/ArgumentsNode.h"

namespace QorCliEngine {

// An argument that is the path of a file: offers the files and folders whose
// path begins as the word does, a folder with a slash after its name. A path
// that cannot be typed as it is begins with a quote, and ends with one unless
// it goes on in a folder.
class PathNode : public ArgumentsNode {
 public:
  using ArgumentsNode::ArgumentsNode;

  // The name of a file or folder, without quotes, of which the text of a
  // candidate is the path.
  static std::string nameOf(std::string const& text);

  // The path that `word` stands for, which may be in quotes: the user's home
  // folder is in the place of a "~" before its first slash, if it is known.
  static std::string pathIn(std::string const& word);

 protected:
  // The path that `word` stands for in this argument.
  virtual std::string meant(std::string const& word) const;

  void offerWords(
      std::size_t index, std::string const& word,
      std::vector<QorCliUtilities::AutoCompleteResult>& results) const override;

  // How `path` is typed: in quotes where it needs them, or begins with one
  // already. The quote at the end is left out when more follows.
  static std::string asTyped(std::string const& path, bool quoted, bool ends);
};

}  // namespace QorCliEngine

#endif
