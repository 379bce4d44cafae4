#include "ACOptions.h"

#include <utility>

#include "Error.h"
#include "OperationTrace.h"

namespace QorCliUtilities {

ACOptions::ACOptions(Grammar const& grammar, std::set<unsigned> modes,
                     Validation_Type validation, bool potentialTerminalNode)
    : AutoCompleteNode(std::move(modes), validation, potentialTerminalNode,
                       false),
      grammar_(grammar) {}

// The tree completes the first word after the keyword like any other; after
// several, it asks what follows only if this node reports its last element.
bool ACOptions::isMatch(CliApiContext& context,
                        std::vector<std::string> const& tokens, unsigned& pos,
                        IOutput&, bool executing) {
  OperationTrace const trace;
  if (pos >= tokens.size()) {
    throw Error("isMatch action past end of token list", 0);
  }
  if (!isValidForMode(context.getMode())) {
    throw Error("isMatch action Not valid for mode", 0);
  }
  bool const isFirst = pos <= 1;
  ++pos;
  atLastOfSeveral_ = !executing && !isFirst && pos == tokens.size();
  return trace.exitWith(true);
}

bool ACOptions::isMultiTokenNode() const {
  return OperationTrace().exitWith(true);
}

bool ACOptions::isLastMultiTokenElement(CliApiContext&) const {
  return OperationTrace().exitWith(atLastOfSeveral_);
}

std::string ACOptions::toShortString() const {
  return OperationTrace().exitWith(std::string("MultiParms"));
}

}  // namespace QorCliUtilities
