#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FilterOracle.h"

namespace qor_test {
namespace {

// The lines kept of `pattern`, which has a character for each line, 'M' for a
// selected one. In the result, '|' is a separator.
std::string kept(std::string const& pattern, OracleContext context) {
  std::vector<OracleLine> lines;
  for (char const c : pattern) {
    lines.push_back({std::string(1, c) + '\n', c == 'M'});
  }
  std::string result;
  for (std::string const& line : keptLines(lines, context)) {
    result += line == kSeparator ? '|' : line.front();
  }
  return result;
}

TEST(FilterOracle, KeepsSelectedLinesWithoutSeparators) {
  EXPECT_EQ("MM", kept("xMyzM", {0, 0}));
  EXPECT_EQ("", kept("xyz", {0, 0}));
  EXPECT_EQ("", kept("", {0, 0}));
}

TEST(FilterOracle, KeepsTrailingContext) {
  EXPECT_EQ("Mx|M", kept("MxyM", {1, 0}));
  EXPECT_EQ("MxyM", kept("MxyM", {2, 0}));
  EXPECT_EQ("MMab", kept("xMMabc", {2, 0}));
}

TEST(FilterOracle, KeepsLeadingContext) {
  EXPECT_EQ("bcM|efM", kept("abcMdefM", {0, 2}));
  EXPECT_EQ("abcMdefM", kept("abcMdefM", {0, 3}));
  EXPECT_EQ("aM", kept("aMbc", {0, 5}));
}

TEST(FilterOracle, KeepsContextOnBothSides) {
  EXPECT_EQ("qMa|cMd", kept("pqMabcMde", {1, 1}));
  EXPECT_EQ("MabM", kept("MabM", {1, 1}));
}

TEST(FilterOracle, AcceptsUnlimitedContext) {
  std::size_t const huge = static_cast<std::size_t>(-1);
  EXPECT_EQ("abMcd", kept("abMcd", {huge, huge}));
}

TEST(FilterOracle, ALineEndsInALineFeed) {
  auto const lines = oracleLines(
      "a\n\nMb\nM", [](std::string const& line) { return line == "Mb"; });
  ASSERT_EQ(3U, lines.size());
  EXPECT_EQ("a\n", lines[0].text);
  EXPECT_FALSE(lines[0].selected);
  EXPECT_EQ("\n", lines[1].text);
  EXPECT_FALSE(lines[1].selected);
  EXPECT_EQ("Mb\n", lines[2].text);
  EXPECT_TRUE(lines[2].selected);
}

}  // namespace
}  // namespace qor_test
