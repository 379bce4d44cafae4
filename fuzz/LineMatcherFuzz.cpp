// The matcher rejects the same patterns as PCRE2, and agrees with PCRE2's
// interpreter if that stays within its match limit.

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

// Longer patterns and lines would take most of the time.
constexpr std::size_t kMaxPattern = 60;  // bytes
constexpr std::size_t kMaxLine = 200;
constexpr std::uint32_t kMaxSteps = 50'000;

// Far more than kMaxSteps take.
constexpr double kSeconds = 10;

// Nothing if the pattern is rejected.
std::optional<LineMatcher> matcherOf(std::string const& pattern,
                                     bool ignoreCase) {
  try {
    return std::optional<LineMatcher>(std::in_place, pattern, ignoreCase,
                                      kSeconds);
  } catch (PatternError const&) {
    return std::nullopt;
  }
}

// A pattern too large for callouts has a lower match limit than the oracle.
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
  if (pattern.size() > kMaxPattern || line.size() > kMaxLine) return 0;
  qor_test::Pcre2Oracle const oracle(pattern, ignoreCase, kMaxSteps);
  std::optional<LineMatcher> matcher = matcherOf(pattern, ignoreCase);
  if (oracle.isValid() != matcher.has_value()) std::abort();
  if (!matcher) return 0;
  // The matcher may decide a line on which the oracle fails.
  std::optional<bool> const expected = oracle.matches(line);
  if (expected && !answers(*matcher, line, oracle, *expected)) std::abort();
  return 0;
}
