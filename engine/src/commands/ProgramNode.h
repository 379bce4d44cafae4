#ifndef QOR_CLI_ENGINE_PROGRAM_NODE_H
#define QOR_CLI_ENGINE_PROGRAM_NODE_H

#include <string>
#include <vector>

#include "commands/PathNode.h"

namespace QorCliEngine {

// A program and its arguments: offers the programs that are found in PATH for a
// first argument without a slash, and paths for all else.
class ProgramNode : public PathNode {
 public:
  using PathNode::PathNode;

 protected:
  void offerWords(
      std::size_t index, std::string const& word,
      std::vector<QorCliUtilities::AutoCompleteResult>& results) const override;
};

}  // namespace QorCliEngine

#endif
