// The matcher refuses the patterns that PCRE2 refuses, and answers as PCRE2's
// interpreter does, where that has an answer within a number of steps.

#include <cstdlib>
#include <optional>
#include <string>

#include "FuzzInput.h"
#include "LineMatcher.h"
#include "PatternError.h"
#include "Pcre2Oracle.h"

namespace {

using QorCliMatching::LineMatcher;
using QorCliMatching::PatternError;

// Compiling longer patterns, and matching longer lines, would take most of the
// time.
constexpr std::size_t kLongestPattern = 60;  // bytes
constexpr std::size_t kLongestLine = 200;
constexpr std::uint32_t kMostSteps = 50'000;

// Far more than so many steps take.
constexpr double kSeconds = 10;

// Nothing when the pattern is refused.
std::optional<LineMatcher> matcherOf(std::string const& pattern,
                                     bool ignoreCase) {
  try {
    return std::optional<LineMatcher>(std::in_place, pattern, ignoreCase,
                                      kSeconds);
  } catch (PatternError const&) {
    return std::nullopt;
  }
}

// A pattern that is too large for callouts has fewer steps than the oracle.
bool answers(LineMatcher& matcher, std::string const& line,
             qor_test::Pcre2Oracle const& oracle, bool expected) {
  try {
    return matcher.matches(line) == expected;
  } catch (PatternError const&) {
    return !oracle.fitsWithCallouts() || oracle.hasEndlessCall(line);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data,
                                      std::size_t size) {
  qor_fuzz::FuzzInput bytes(data, size);
  bool const ignoreCase = bytes.byte() % 2 != 0;
  std::string const pattern = bytes.line();
  std::string const line = bytes.line();
  if (pattern.size() > kLongestPattern || line.size() > kLongestLine) return 0;
  qor_test::Pcre2Oracle const oracle(pattern, ignoreCase, kMostSteps);
  std::optional<LineMatcher> matcher = matcherOf(pattern, ignoreCase);
  if (oracle.isValid() != matcher.has_value()) std::abort();
  if (!matcher) return 0;
  // Where the oracle has no answer, the matcher may still know it.
  std::optional<bool> const expected = oracle.matches(line);
  if (expected && !answers(*matcher, line, oracle, *expected)) std::abort();
  return 0;
}
