#include "FilterArguments.h"

#include <algorithm>
#include <limits>

namespace QorCliPipe {
namespace {

using QorCliUtilities::Arguments;
using QorCliUtilities::Grammar;
using QorCliUtilities::Parameter;
using QorCliUtilities::Problem;

constexpr char kPattern[] = "<pattern>";

// Saturates like a conversion to a 32-bit long, on every platform.
int lineCount(Arguments const& typed, char const* option) {
  constexpr unsigned max = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(typed.number(option), max));
}

}  // namespace

Grammar const& filterGrammar() {
  static Parameter const lines = Parameter::number(
      "<value>",
      "The value for number lines to be printed after leading / trailing "
      "context");
  static Grammar const grammar(
      {{"-i", "--ignore",
        "Ignore case distinctions in both the pattern and the input"},
       {"-v", "--invert",
        "Invert the sense of matching, to select non-matching lines"},
       {"-A", "--after",
        "Print number of lines of trailing context after matching lines",
        lines},
       {"-B", "--before",
        "Print number of lines of leading context before matching lines",
        lines}},
      {Parameter::text(kPattern, "The text used for pattern matching")});
  return grammar;
}

std::string parseFilterArguments(std::vector<std::string> const& tokens,
                                 FilterArguments& arguments) {
  Arguments typed;
  if (Problem const problem = filterGrammar().parse(tokens, typed)) {
    return problem.kind == Problem::Kind::kInvalidValue ? problem.text + '\n'
                                                        : "Command not found\n";
  }
  arguments.ignoreCase = typed.has("-i");
  arguments.invert = typed.has("-v");
  arguments.after = lineCount(typed, "-a");
  arguments.before = lineCount(typed, "-b");
  arguments.pattern = typed.text(kPattern);
  return "";
}

}  // namespace QorCliPipe
