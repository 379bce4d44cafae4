#include "LineMatcher.h"

// PCRE2's interpreter defines which patterns are valid and what they match. But
// backtracking can take time exponential in the line, and the filter must not
// block the engine, whatever an operator types and a device prints. So each
// pattern gets the fastest of three strategies that is bounded for it, judging
// by its items (PatternReader).
//
// Plain: PCRE2's JIT code. Nothing is faster, and nothing stops it: it does not
//   count backtracking into a group with alternatives against the match limit.
//   So it runs only patterns whose backtracking has a known bound: no unbounded
//   group, at most two unbounded quantifiers, few paths through the rest. Their
//   cost grows with the line; lines over the bound go to RE2.
// Linear: RE2, in time proportional to the line times the size of the compiled
//   program. A small program takes any line; a large one only lines that it is
//   sure to finish within the timed strategy's limit. RE2 supports regular
//   patterns only.
//   If a pattern never matches the empty string, it is enough to know whether
//   there is a match, and on that RE2 and PCRE2 agree. If it may, the answer
//   depends on which match comes first, so RE2 does not get it.
// Timed: PCRE2 for everything else, with a callout before each item of the
//   pattern. The callout checks the clock now and then, and aborts the match
//   once the lines of the call exceed their time limit. A fast pattern never
//   notices; a hostile one fails.
//
// All three agree, because every known difference is excluded:
//
// - JIT code misses matches of empty alternatives. These patterns go to RE2.
// - JIT code with start optimizations misses matches of an unbounded quantifier
//   after alternatives of different lengths. There it tries every start offset.
// - JIT code with callouts fails in possessive groups, and on groups with
//   subroutine calls or back references. The interpreter matches these.
// - RE2's \s lacks the vertical tab, it reads {02} literally, folds the case of
//   letters in the upper half of Latin-1, compiles a common prefix of
//   alternatives as UTF-8, and merges the alternatives a|(?i:a) into the first.
//   The reader rewrites \s and leaves patterns with the others to PCRE2.

namespace QorCliMatching {
namespace {

// Backtracking steps from each start offset: 128 KiB of text take at most a
// second.
constexpr double kMaxSteps = 6000;

// A lower limit for plain lines would exclude most lines.
constexpr std::size_t kMinPlainLine = 64;  // bytes

constexpr std::size_t kMaxLine = std::size_t{1} << 30;  // bytes

// RE2 compiles this many in a few milliseconds.
constexpr double kMaxProgram = 5000;  // items, counted quantifiers expanded

// A program that matches a call of `kCall` bytes in `kSeconds` is small.
constexpr std::size_t kCall = std::size_t{128} * 1024;  // bytes
constexpr double kSeconds = 1.7;

// The longest line on which no start offset takes more than kMaxSteps; 0 if
// there is none.
std::size_t maxLine(Backtracking const& backtracking) {
  if (backtracking.loops == Backtracking::kUnbounded) return 0;
  std::size_t bytes = kMaxLine;
  while (bytes != 0 &&
         backtracking.steps(static_cast<double>(bytes)) > kMaxSteps) {
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
  maxPlainLine_ = maxLine(facts_.backtracking);
  if (timed_.mayMatchEmpty()) {
    facts_.reason = "may match the empty string";
  } else if (maxPlainLine_ >= kMinPlainLine) {
    strategy_ = Strategy::kPlain;
    canFind_ = facts_.isFixed;
  } else if (hasLinear()) {
    strategy_ = Strategy::kLinear;
  } else if (!facts_.regular.empty()) {
    facts_.reason = "too large for RE2";
  }
}

bool LineMatcher::matches(std::string_view line) {
  if (strategy_ == Strategy::kPlain && line.size() <= maxPlainLine_) {
    PlainExpression::Answer const answer = plain().match(line);
    if (answer != PlainExpression::Answer::kUnknown) {
      return answer == PlainExpression::Answer::kMatch;
    }
  }
  if (strategy_ != Strategy::kTimed && hasLinear() && fitsInTime(line.size())) {
    return linear_->matches(line);
  }
  return timed_.matches(line, budget_);
}

// When PCRE2 cannot tell, any of the text may match.
LineMatcher::Span LineMatcher::find(std::string_view text, std::size_t from) {
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

// Whether RE2 can match the pattern.
bool LineMatcher::hasLinear() {
  if (facts_.regular.empty() || facts_.size > kMaxProgram) return false;
  if (!linear_) linear_.emplace(facts_.regular, facts_.ignoreCase);
  return linear_->isUsable();
}

// Whether RE2 is sure to match a line of this size in time.
bool LineMatcher::fitsInTime(std::size_t bytes) {
  return linear_->maxSeconds(kCall) <= kSeconds ||
         linear_->maxSeconds(bytes) <= budget_.left();
}

}  // namespace QorCliMatching
