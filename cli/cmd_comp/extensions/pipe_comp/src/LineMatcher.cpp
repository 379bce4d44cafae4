#include "LineMatcher.h"

#include <Poco/Exception.h>

#include <algorithm>
#include <ctime>

#include "GroupCalls.h"
#include "PatternNesting.h"
#include "PatternTraits.h"
#include "StackLeft.h"

// A line is decided by the first of three ways that does not give up:
//
// 1. Machine code over the whole line. The library limits the steps from one
//    beginning of a match only, so the limit is set such that all the
//    beginnings of the line together stay within kLineSteps. This decides all
//    but the pathological.
// 2. Machine code from one beginning after the other, each with more steps,
//    until kLineTime of processor time is used up. This decides long lines, on
//    which the first way is not tried.
// 3. Poco, which matches on the caller's stack, under limits that fit what is
//    left of it and keep all beginnings within kLineSteps.
//
// A step is a place to which the library may come back. Repeated characters and
// parts that are never come back to run through the line without a step; where
// a pattern has any, a step is taken to cost as much as the whole line, and
// long lines are left to the second way alone, whose clock sees all work.

namespace QorCliPipe {
namespace {

using Poco::RegularExpression;

// Steps that may be spent on one line, and on one beginning in it: where steps
// cost as much as the line, so many bytes looked at instead.
constexpr std::size_t kLineSteps = 50'000'000;
constexpr std::size_t kStepsFromOneStart = 10'000'000;
constexpr std::size_t kBytesFromOneStart = 1'000'000'000;
constexpr std::size_t kMoreSteps = 4;  // times as many, when they were too few

// Poco counts the repetitions of characters as steps, too: it looks at less of
// the line within a step, by this factor.
constexpr std::size_t kPocoAdvantage = 64;

// Longer lines are long: work that grows with the square of shorter ones is
// done within a second.
constexpr std::size_t kLongLine = 32 * 1024;  // bytes

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

// What may be read of a pattern in order to follow the calls of groups in it
// when it is compiled: that takes half a second.
constexpr std::size_t kMostCallReach = 64 * 1024 * 1024;  // bytes

// The whole match and 20 groups are what Poco has room for.
constexpr int kPocoGroups = 20;

int pocoOptions(bool ignoreCase) {
  return ignoreCase ? RegularExpression::RE_CASELESS : 0;
}

// To be called wherever a pattern is compiled: the stack may be another one
// each time.
void checkNesting(std::string const& pattern) {
  std::size_t const left = stackLeft();
  if (left < kCompileStack ||
      nestingBound(pattern) > (left - kCompileStack) / kCompileStackPerLevel) {
    throw Poco::RegularExpressionException("pattern too deeply nested");
  }
}

std::string const& checked(std::string const& pattern) {
  checkNesting(pattern);
  if (callReach(pattern, kMostCallReach) == kMostCallReach) {
    throw Poco::RegularExpressionException("too many calls of groups");
  }
  return pattern;
}

// How many levels of recursion Poco's matching can afford.
std::size_t affordableRecursion() {
  std::size_t const left = stackLeft();
  return left < kMatchStack ? 0 : (left - kMatchStack) / kMatchStackPerLevel;
}

// A power of two, so that lines of similar length have the same.
std::uint32_t roundedSteps(std::size_t steps) {
  std::uint32_t result = 1;
  while (result <= std::min(steps, kStepsFromOneStart) / 2) result *= 2;
  return result;
}

double processorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) +
         1e-9 * static_cast<double>(now.tv_nsec);
}

}  // namespace

LineMatcher::LineMatcher(std::string const& pattern, bool ignoreCase)
    : pattern_(checked(pattern)),
      ignoreCase_(ignoreCase),
      longSteps_(stepsMayBeLong(pattern)),
      oneBeginning_(hasOneBeginning(pattern)),
      expression_(pattern, pocoOptions(ignoreCase), true) {
  if (machineCodeAgrees(pattern)) jit_.emplace(pattern, ignoreCase);
}

bool LineMatcher::matches(std::string_view line) {
  bool const isLong = line.size() > kLongLine;
  Answer answer = isLong ? Answer::kUndecided : matchAtOnce(line);
  if (answer == Answer::kUndecided) answer = matchStartByStart(line);
  if (answer != Answer::kUndecided) return answer == Answer::kMatch;
  if (isLong && longSteps_) {
    throw Poco::RegularExpressionException("line too long for the pattern");
  }
  return matchWithPoco(line);
}

LineMatcher::Answer LineMatcher::matchAtOnce(std::string_view line) const {
  if (!jit_) return Answer::kUndecided;
  return jit_->match(line, 0, stepsFromEachStart(line, line.size()));
}

LineMatcher::Answer LineMatcher::matchStartByStart(std::string_view line) {
  if (!jit_ || !jit_->isUsable() || !canBeAnchored(pattern_)) {
    return Answer::kUndecided;
  }
  if (!anchored_) {
    checkNesting(pattern_);
    anchored_.emplace("\\G(?:" + pattern_ + ")", ignoreCase_);
  }
  double const end = processorSeconds() + kLineTime;
  for (std::size_t start = 0; start <= line.size(); ++start) {
    Answer const answer = matchFrom(line, start, end);
    if (answer != Answer::kNoMatch || oneBeginning_) return answer;
    if (start % kStartsPerLook == 0 && processorSeconds() > end) {
      return Answer::kUndecided;
    }
  }
  return Answer::kNoMatch;
}

// With few steps at first where each may be long, and more as long as what they
// took says that there is time for them.
LineMatcher::Answer LineMatcher::matchFrom(std::string_view line,
                                           std::size_t start,
                                           double end) const {
  std::size_t steps =
      longSteps_ ? kBytesFromOneStart / (line.size() + 1) : kStepsFromOneStart;
  while (true) {
    double const begin = longSteps_ ? processorSeconds() : 0;
    Answer const answer = anchored_->match(line, start, roundedSteps(steps));
    if (answer != Answer::kUndecided || steps >= kStepsFromOneStart) {
      return answer;
    }
    double const now = processorSeconds();
    if (now + (now - begin) * kMoreSteps > end) return Answer::kUndecided;
    steps *= kMoreSteps;
  }
}

// Poco has no parameters for the limits, but a pattern can set its own. Where
// it has more groups than Poco can report, they do without capturing; a pattern
// that refers back to them gives up on the line.
bool LineMatcher::matchWithPoco(std::string_view line) {
  std::string const limits =
      "(*LIMIT_RECURSION=" + std::to_string(affordableRecursion()) +
      ")(*LIMIT_MATCH=" +
      std::to_string(stepsFromEachStart(line, line.size() / kPocoAdvantage)) +
      ")";
  if (!limited_ || limits != limits_) {
    checkNesting(pattern_);
    bool const tooMany = JitExpression::groups(pattern_) > kPocoGroups;
    limits_ = limits;
    limited_.emplace(limits + pattern_,
                     pocoOptions(ignoreCase_) |
                         (tooMany ? RegularExpression::RE_NO_AUTO_CAPTURE : 0),
                     true);
  }
  std::string matched;
  limited_->extract(std::string(line), matched, 0);
  return !matched.empty();
}

// How many steps from each beginning keep all of them within the line's, when a
// step costs at most `stepCost`.
std::uint32_t LineMatcher::stepsFromEachStart(std::string_view line,
                                              std::size_t stepCost) const {
  std::size_t const cost = longSteps_ ? std::max<std::size_t>(stepCost, 1) : 1;
  return roundedSteps(kLineSteps / (line.size() + 1) / cost);
}

}  // namespace QorCliPipe
