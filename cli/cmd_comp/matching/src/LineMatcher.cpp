#include "LineMatcher.h"

// PCRE2 says which patterns are valid and what they match: the answer for a
// line is that of its interpreter. But backtracking may take time that grows
// exponentially with the line, and the filter must not keep the engine waiting,
// whatever an operator types and a device prints. So a pattern takes the
// fastest of three ways that is bounded for it, after what its text tells
// (PatternReader).
//
// Plain: PCRE2's JIT code. Nothing is faster, and nothing stops it: it does not
//   count backtracking into a group with alternatives against the match limit.
//   So it gets only patterns whose backtracking has a known bound: no group
//   repeated without a limit, at most two quantifiers without a limit, few ways
//   through the rest. What they cost grows with the line. A line for which that
//   is too much goes to RE2.
// Linear: RE2, in time proportional to the line and to the program that the
//   pattern becomes. A small program gets any line, a large one those that it
//   is sure to be done with before the time of the timed way is up. It knows
//   regular patterns only.
//   A match of a pattern that never matches the empty text is not empty, so it
//   is enough to know whether there is one, and on that RE2 and PCRE2 agree. A
//   pattern that may match the empty text is no case for RE2: there it matters
//   which match is the first.
// Timed: PCRE2 for all the rest, with a callout before each item of the
// pattern.
//   The callout looks at the clock now and then, and ends the match when the
//   lines of the call have used up their time. A quick pattern does not notice;
//   a hostile one gets an error instead of an answer.
//
// All three answer alike because what is known to make a difference is
// excluded:
//
// - JIT code misses matches of empty alternatives, and, when it looks for start
//   offsets, of a loop behind alternatives of different lengths. The first are
//   left to RE2; for the second it tries every start offset.
// - JIT code with callouts answers wrongly in possessive groups, and where
//   groups are called or referred to: the interpreter matches these.
// - RE2's \s lacks the vertical tab, {02} is text to it, it folds the case of
//   letters in the upper half of Latin-1, compiles a common prefix of
//   alternatives as UTF-8, and merges the alternatives a|(?i:a) into the first.
//   The reader writes the \s differently, and leaves patterns with the others
//   to PCRE2.

namespace QorCliMatching {
namespace {

// Backtracking steps from each start offset: 128 KiB of text take a second at
// most.
constexpr double kMostSteps = 6000;

// Where plain lines would be shorter than this, most lines are longer.
constexpr std::size_t kShortestPlain = 64;  // bytes

constexpr std::size_t kLongestLine = std::size_t{1} << 30;  // bytes

// RE2 takes a few milliseconds to compile as much.
constexpr double kLargestProgram = 5000;  // items, repetitions written out

// A program that is done with a call of `kCall` bytes in `kSeconds` is small.
constexpr std::size_t kCall = std::size_t{128} * 1024;  // bytes
constexpr double kSeconds = 1.7;

// The longest line on which each start offset takes kMostSteps at most; 0 when
// there is none.
std::size_t longestLine(Backtracking const& backtracking) {
  if (backtracking.loops == Backtracking::kUnbounded) return 0;
  std::size_t bytes = kLongestLine;
  while (bytes != 0 &&
         backtracking.steps(static_cast<double>(bytes)) > kMostSteps) {
    bytes -= (bytes + 7) / 8;
  }
  return bytes;
}

}  // namespace

LineMatcher::LineMatcher(std::string const& pattern, bool ignoreCase,
                         double seconds)
    : pattern_(pattern),
      ignoreCase_(ignoreCase),
      budget_(seconds),
      timed_(pattern, ignoreCase),
      facts_(readPattern(timed_.items(pattern), ignoreCase)) {
  if (facts_.jitAgrees) timed_.useJitCode();
  longestPlain_ = longestLine(facts_.backtracking);
  if (timed_.mayMatchNothing()) {
    facts_.reason = "it may match nothing";
  } else if (longestPlain_ >= kShortestPlain) {
    way_ = Way::kPlain;
    finds_ = facts_.isFixed;
  } else if (hasLinear()) {
    way_ = Way::kLinear;
  } else if (!facts_.regular.empty()) {
    facts_.reason = "too large for RE2";
  }
}

bool LineMatcher::matches(std::string_view line) {
  if (way_ == Way::kPlain && line.size() <= longestPlain_) {
    PlainExpression::Answer const answer = plain().match(line);
    if (answer != PlainExpression::Answer::kUnknown) {
      return answer == PlainExpression::Answer::kMatch;
    }
  }
  if (way_ != Way::kTimed && hasLinear() && maySpend(line.size())) {
    return linear_->matches(line);
  }
  return timed_.matches(line, budget_);
}

// Where the answer is not known, a match is taken to be anywhere.
LineMatcher::Place LineMatcher::find(std::string_view text, std::size_t from) {
  switch (plain().match(text, from)) {
    case PlainExpression::Answer::kMatch:
      return {plain_->begin(), plain_->end()};
    case PlainExpression::Answer::kNoMatch:
      return {std::string_view::npos, 0};
    case PlainExpression::Answer::kUnknown:
      break;
  }
  return {from, text.size()};
}

PlainExpression const& LineMatcher::plain() {
  if (!plain_) {
    plain_.emplace(pattern_, ignoreCase_, !facts_.hasLoopAndChoice);
  }
  return *plain_;
}

// Whether RE2 takes the pattern.
bool LineMatcher::hasLinear() {
  if (facts_.regular.empty() || facts_.size > kLargestProgram) return false;
  if (!linear_) linear_.emplace(facts_.regular, facts_.ignoreCase);
  return linear_->isUsable();
}

// Whether RE2 is done in time with a line of so many bytes.
bool LineMatcher::maySpend(std::size_t bytes) {
  return linear_->mostSeconds(kCall) <= kSeconds ||
         linear_->mostSeconds(bytes) <= budget_.left();
}

}  // namespace QorCliMatching
