#include "LineMatcher.h"

#include <Poco/Exception.h>

#include <algorithm>
#include <ctime>

#include "PatternNesting.h"
#include "StackLeft.h"

// A line is decided by the first of three ways that does not give up:
//
// 1. Machine code over the whole line. The library limits the steps from one
//    beginning of a match only, so the limit is set such that all the
//    beginnings of the line together stay within kLineSteps. This decides all
//    lines but the pathological.
// 2. Machine code from one beginning after the other, each with the library's
//    usual limit, until kLineTime of processor time is used up. This decides
//    long lines with a long match.
// 3. Poco, which matches on the caller's stack, with limits that fit what is
// left
//    of it and keep all beginnings within kLineSteps.

namespace QorCliPipe {
namespace {

using Poco::RegularExpression;

// Steps of backtracking that may be spent on one line, and on one beginning in
// it: the latter is the library's own limit, which Poco leaves in force.
constexpr std::uint32_t kLineSteps = 50'000'000;
constexpr std::uint32_t kStepsFromOneStart = 10'000'000;

// Processor time that may be spent on one line, beginning by beginning; how
// many beginnings are tried between two looks at the clock.
constexpr double kLineTime = 1.0;  // seconds
constexpr std::size_t kStartsPerLook = 16;

// What compiling takes of the stack, measured and rounded up generously: so
// much for any pattern, and so much for each level of nesting.
constexpr std::size_t kCompileStack = 24 * 1024;  // bytes
constexpr std::size_t kCompileStackPerLevel = 1024;

// What Poco's matching takes, likewise, for each level of its recursion.
constexpr std::size_t kMatchStack = 24 * 1024;  // bytes
constexpr std::size_t kMatchStackPerLevel = 640;

// The whole match and 20 groups are what Poco has room for.
constexpr int kPocoGroups = 20;

int pocoOptions(bool ignoreCase) {
  return ignoreCase ? RegularExpression::RE_CASELESS : 0;
}

std::string const& checkedNesting(std::string const& pattern) {
  std::size_t const left = stackLeft();
  if (left < kCompileStack ||
      nestingBound(pattern) > (left - kCompileStack) / kCompileStackPerLevel) {
    throw Poco::RegularExpressionException("pattern too deeply nested");
  }
  return pattern;
}

// How many levels of recursion Poco's matching can afford.
std::size_t affordableRecursion() {
  std::size_t const left = stackLeft();
  return left < kMatchStack ? 0 : (left - kMatchStack) / kMatchStackPerLevel;
}

std::uint32_t stepsFromEachStart(std::string_view line) {
  auto const starts = static_cast<std::uint32_t>(
      std::min<std::size_t>(line.size() + 1, kLineSteps));
  return std::min(kLineSteps / starts, kStepsFromOneStart);
}

double processorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) +
         1e-9 * static_cast<double>(now.tv_nsec);
}

// Whether "\G(?:pattern)" means the pattern, bound to the beginning of the
// match: not when the pattern must stand first, or refers to that beginning or
// to itself.
bool canBeAnchored(std::string const& pattern) {
  for (char const* obstacle :
       {"(*", "\\G", "(?R", "(?0", "(?+0", "(?-0", "\\g"}) {
    if (pattern.find(obstacle) != std::string::npos) return false;
  }
  return true;
}

}  // namespace

LineMatcher::LineMatcher(std::string const& pattern, bool ignoreCase)
    : pattern_(checkedNesting(pattern)),
      ignoreCase_(ignoreCase),
      expression_(pattern, pocoOptions(ignoreCase), true),
      jit_(pattern, ignoreCase) {}

bool LineMatcher::matches(std::string_view line) {
  Answer answer = jit_.match(line, 0, stepsFromEachStart(line));
  if (answer == Answer::kUndecided) answer = matchStartByStart(line);
  if (answer == Answer::kUndecided) return matchWithPoco(line);
  return answer == Answer::kMatch;
}

LineMatcher::Answer LineMatcher::matchStartByStart(std::string_view line) {
  if (!jit_.isUsable() || !canBeAnchored(pattern_)) return Answer::kUndecided;
  if (!anchored_) anchored_.emplace("\\G(?:" + pattern_ + ")", ignoreCase_);
  double const end = processorSeconds() + kLineTime;
  for (std::size_t start = 0; start <= line.size(); ++start) {
    Answer const answer = anchored_->match(line, start, kStepsFromOneStart);
    if (answer != Answer::kNoMatch) return answer;
    if (start % kStartsPerLook == 0 && processorSeconds() > end) {
      return Answer::kUndecided;
    }
  }
  return Answer::kNoMatch;
}

// Poco has no parameters for the limits, but a pattern can set its own. Where
// it has more groups than Poco can report, they do without capturing; a pattern
// that refers back to them gives up on the line.
bool LineMatcher::matchWithPoco(std::string_view line) {
  std::string const limits =
      "(*LIMIT_RECURSION=" + std::to_string(affordableRecursion()) +
      ")(*LIMIT_MATCH=" + std::to_string(stepsFromEachStart(line)) + ")";
  int const groupOptions =
      jit_.groups() > kPocoGroups ? RegularExpression::RE_NO_AUTO_CAPTURE : 0;
  RegularExpression const limited(
      limits + pattern_, pocoOptions(ignoreCase_) | groupOptions, true);
  std::string matched;
  limited.extract(std::string(line), matched, 0);
  return !matched.empty();
}

}  // namespace QorCliPipe
