// Random patterns made of what hides groups, or seems to: the groups that are
// read in their text are as many as the library finds.

#include <Poco/Exception.h>
#include <Poco/RegularExpression.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "CallGraph.h"
#include "JitExpression.h"
#include "PatternScan.h"
#include "PocoSearch.h"
#include "Seed.h"
#include "SmallStack.h"

namespace qor_test {
namespace {

const int kPatterns = isSlowRun() ? 100'000 : 1'000'000;
constexpr std::array kParts = {
    "(",        ")",     ")",     "(?:",    "(?=",       "(?|",
    "|",        "(?<n>", "(?'m'", "(?P<o>", "(?(1)",     "(?#",
    "(*FAIL)",  "(*:",   "(?C1)", "(?C'",   "(?C{",      "'",
    "(?[",      "])",    "+",     "[",      "]",         "]",
    "[^",       "[:",    ":]",    "alpha",  "[:alpha:]", "[[:<:]]",
    "[.",       ".]",    "-",     "\\",     "\\\\",      "\\Q",
    "\\E",      "\\E",   "\\c",   "\\x{",   "#",         "\n",
    "(?x)",     "(?-x)", "(?x:",  "(?i-x:", "(?ix)",     "(?J)",
    " ",        "a",     "*",     "?",      "{2}",       "}",
    "(*UTF8)",  "\r",    "\v",    "\x85",   "\xC2\x85",  "\xE2\x80\xA8",
    "\xC5\x85", "(?xx)", "[ "};

// What patterns begin with.
constexpr std::array kOptions = {
    "",        "",           "(*UTF8)",    "(*CR)",
    "(*CRLF)", "(*ANYCRLF)", "(*ANY)",     "(*UTF8)(*ANY)",
    "(?x)",    "(*CR)(?x)",  "(*ANY)(?x)", "(*UTF8)(*ANY)(?x)"};

bool isAccepted(std::string const& pattern) {
  try {
    Poco::RegularExpression const expression(
        pattern, QorCliPipe::pocoOptions(false), true);
    return true;
  } catch (Poco::RegularExpressionException const&) {
    return false;
  }
}

bool isReadForSure(std::string const& pattern) {
  QorCliPipe::PatternScan scan(pattern);
  while (!scan.atEnd()) scan.advance();
  return scan.isSure();
}

// Patterns that were kept are added to, so that long ones are met, too.
class RandomPatterns {
 public:
  std::string next() {
    std::string pattern = kept_[below(kKept)];
    for (std::size_t parts = below(kMostParts) + 1; parts > 0; --parts) {
      pattern.insert(below(pattern.size() + 1), kParts[below(kParts.size())]);
    }
    return pattern;
  }

  // Forgets another one for it.
  void keep(std::string const& pattern) {
    if (pattern.size() > kLongest) return;
    kept_[below(kKept)] = pattern;
  }

 private:
  static std::vector<std::string> beginnings() {
    std::vector<std::string> result;
    while (result.size() < kKept) {
      for (char const* options : kOptions) {
        result.push_back(std::string(options) + "(a)");
      }
    }
    return result;
  }

  static constexpr std::size_t kMostParts = 3;
  static constexpr std::size_t kLongest = 60;  // bytes
  static constexpr std::size_t kKept = 1000;

  std::size_t below(std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
  }

  std::mt19937 random_{testSeed()};
  std::vector<std::string> kept_ = beginnings();
};

TEST(PatternScanProperty, FindsTheGroupsThatTheLibraryFinds) {
  RandomPatterns patterns;
  int withGroups = 0;
  for (int i = 0; i < kPatterns; ++i) {
    std::string const pattern = patterns.next();
    if (!isAccepted(pattern)) continue;
    if (!isReadForSure(pattern)) {
      EXPECT_NE(std::string::npos, pattern.find("(?xx"))
          << testing::PrintToString(pattern);
      continue;
    }
    std::size_t const groups =
        QorCliPipe::JitExpression::traits(pattern, false).groups;
    // The first is the whole pattern. Groups in alternatives such as (?|a|b)
    // share numbers.
    std::size_t const read = QorCliPipe::CallGraph(pattern).groups().size() - 1;
    bool const mayShare = pattern.find("(?|") != std::string::npos;
    EXPECT_TRUE(read == groups || (mayShare && read > groups))
        << testing::PrintToString(pattern) << ": " << read << " read, "
        << groups << " there";
    if (groups == 0) continue;
    ++withGroups;
    patterns.keep(pattern);
  }
  std::cout << withGroups << " patterns with groups\n";
  EXPECT_GT(withGroups, kPatterns / 10);
}

}  // namespace
}  // namespace qor_test
