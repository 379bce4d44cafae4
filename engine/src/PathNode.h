#ifndef QOR_CLI_ENGINE_PATH_NODE_H
#define QOR_CLI_ENGINE_PATH_NODE_H

#include <string>
#include <vector>

#include "ArgumentsNode.h"

namespace QorCliEngine {

// An argument that is the path of a file: offers the files and folders whose
// path begins as the word does, a folder with a slash behind its name. A path
// that cannot be typed as it is begins with a quote.
class PathNode : public ArgumentsNode {
 public:
  using ArgumentsNode::ArgumentsNode;

 protected:
  void offerWords(
      std::string const& word,
      std::vector<QorCliUtilities::AutoCompleteResult>& results) const override;
};

}  // namespace QorCliEngine

#endif
