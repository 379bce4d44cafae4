#include "ACFilterOptions.h"

#include <utility>

#include "Error.h"
#include "FilterArguments.h"
#include "OperationTrace.h"

namespace QorCliPipe {

using QorCliUtilities::Error;
using QorCliUtilities::OperationTrace;

ACFilterOptions::ACFilterOptions(std::set<unsigned> modes,
                                 QorCliUtilities::Validation_Type validation,
                                 bool potentialTerminalNode)
    : AutoCompleteNode(std::move(modes), validation, potentialTerminalNode,
                       false) {
  char const* const ignore =
      "Ignore case distinctions in both the pattern and the input";
  char const* const invert =
      "Invert the sense of matching, to select non-matching lines";
  char const* const after =
      "Print number of lines of trailing context after matching lines";
  char const* const before =
      "Print number of lines of leading context before matching lines";
  options_ = {
      {"-i", {ignore, "--ignore", "-i", false, false}},
      {"-v", {invert, "--invert", "-v", false, false}},
      {"-a", {after, "--after", "-A", true, false}},
      {"-b", {before, "--before", "-B", true, false}},
      {"--ignore", {ignore, "-i", "--ignore", false, true}},
      {"--invert", {invert, "-v", "--invert", false, true}},
      {"--after", {after, "-a", "--after", true, true}},
      {"--before", {before, "-b", "--before", true, true}},
  };
}

bool ACFilterOptions::isMatch(QorCliUtilities::CliApiContext& context,
                              std::vector<std::string> const& tokens,
                              unsigned& pos, QorCliUtilities::IOutput&, bool) {
  OperationTrace const trace;
  if (pos >= tokens.size()) {
    throw Error("isMatch action past end of token list", 0);
  }
  if (!isValidForMode(context.getMode())) {
    throw Error("isMatch action Not valid for mode", 0);
  }
  ++pos;
  return trace.exitWith(true);
}

bool ACFilterOptions::isMultiTokenNode() const {
  return OperationTrace().exitWith(true);
}

std::string ACFilterOptions::toShortString() const {
  return OperationTrace().exitWith(std::string("MultiParms"));
}

bool ACFilterOptions::isNumber(std::string const& text) {
  OperationTrace const trace;
  return trace.exitWith(isDecimalNumber(text));
}

}  // namespace QorCliPipe
