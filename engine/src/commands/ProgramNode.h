#ifndef QOR_CLI_ENGINE_PROGRAM_NODE_H
#define QOR_CLI_ENGINE_PROGRAM_NODE_H

#include <string>
#include <vector>

#include "commands/PathNode.h"

namespace QorCliEngine {

// A program and its arguments: offers the programs that are found in PATH for a
// first argument without a slash, and paths for all else.
// What is in quotes is taken as it is.
class ProgramNode : public PathNode {
 public:
  using PathNode::PathNode;

  // What `word` stands for: what is in its quotes, or as in PathNode.
  static std::string argumentIn(std::string const& word);

 protected:
  std::string meant(std::string const& word) const override;
  void offerWords(
      std::size_t index, std::string const& word,
      std::vector<QorCliUtilities::AutoCompleteResult>& results) const override;
};

}  // namespace QorCliEngine

#endif
