#ifndef QOR_CLI_LINE_MATCHER_H
#define QOR_CLI_LINE_MATCHER_H

#include <Poco/RegularExpression.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "CompileDemand.h"
#include "JitExpression.h"
#include "PocoSearch.h"

namespace QorCliPipe {

// Decides whether a line matches a Perl-compatible regular expression.
//
// A line matches when the first match in it is not empty, so an expression that
// only ever matches nothing matches no line. What Poco::RegularExpression
// accepts, refuses and finds is the measure, but a pattern with more groups
// than Poco can report is no error (without machine code, it is where groups
// are named, called or referred to), and neither pattern nor line can make the
// matcher
//
// - use more stack than the calling thread has left,
// - take more than about half a second to compile a pattern, or
// - work on one line for more than a few seconds: it gives up then.
//
// Used by one thread at a time.
class LineMatcher {
 public:
  // Compiles `pattern`. Throws Poco::RegularExpressionException when it is
  // malformed, nested more deeply than the stack can take, or has groups that
  // call each other in too many ways.
  LineMatcher(std::string const& pattern, bool ignoreCase);

  // `line` comes without its line feed. Throws Poco::RegularExpressionException
  // when the expression gives up on the line.
  bool matches(std::string_view line);

 private:
  using Answer = JitExpression::Answer;

  Answer matchInMachineCode(std::string_view line);
  Answer matchWithPoco(std::string_view line);
  template <typename AtOnce, typename From>
  Answer decide(std::string_view line, std::size_t stepCost, AtOnce atOnce,
                From from);
  bool isTooLongAtOnce(std::string_view line) const;
  std::size_t pocoStepCost(std::string_view line);
  std::size_t starts(std::string_view line);
  JitExpression const& anchored();
  JitExpression::Traits const& traits();

  std::string pattern_;
  bool ignoreCase_;
  CompileDemand demand_;
  bool longSteps_;
  bool callsGroups_;
  bool independentStarts_;
  Poco::RegularExpression expression_;
  // In machine code: the expression, unless Poco finds something else.
  std::optional<JitExpression> jit_;
  // Made for the first line that needs them; `anchored_` is machine code for
  // one beginning of a match.
  std::optional<JitExpression> anchored_;
  std::optional<PocoSearch> poco_;
  std::optional<JitExpression::Traits> traits_;
};

}  // namespace QorCliPipe

#endif
