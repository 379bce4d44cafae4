#include "ACParameter.h"

#include <utility>

#include "Error.h"
#include "Grammar.h"
#include "OperationTrace.h"

namespace QorCliUtilities {

ACParameter::ACParameter(Parameter parameter, bool potentialTerminalNode,
                         std::set<unsigned> modes)
    : AutoCompleteNode(std::move(modes), VALIDATION_KEYWORD,
                       potentialTerminalNode, false),
      parameter_(std::move(parameter)) {}

bool ACParameter::isMatch(CliApiContext& context,
                          std::vector<std::string> const& tokens,
                          unsigned& position, IOutput&, bool) {
  OperationTrace const trace;
  if (position >= tokens.size()) {
    throw Error("isMatch parameter past end of token list", 0);
  }
  if (!isValidForMode(context.getMode())) {
    throw Error("isMatch parameter not valid for mode", 0);
  }
  std::string const& word = tokens[position];
  ++position;
  return trace.exitWith(!looksLikeOption(word) && parameter_.accepts(word));
}

int ACParameter::autoComplete(CliApiContext& context,
                              std::vector<std::string> const& tokens,
                              std::string const&, unsigned& position,
                              bool endsWithSpace, bool,
                              std::vector<AutoCompleteResult>& results,
                              IOutput&) {
  OperationTrace const trace;
  if (!isValidForMode(context.getMode())) {
    throw Error("Autocomplete parameter not valid for mode", 0);
  }
  bool const follows = position >= tokens.size() && !endsWithSpace;
  std::string const typed = extractToken(tokens, position);
  if (looksLikeOption(typed)) return trace.exitWith(0);
  parameter_.offer(typed,
                   follows ? QOR_CLI_TOKEN_AFTER_LINE : QOR_CLI_TOKEN_NEXT_WORD,
                   results);
  return trace.exitWith(0);
}

bool ACParameter::ignoreCase() const { return OperationTrace().exitWith(true); }

std::string ACParameter::toShortString() const {
  return OperationTrace().exitWith(parameter_.placeholder());
}

}  // namespace QorCliUtilities
