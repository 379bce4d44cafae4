#include <gtest/gtest.h>

#include <string>

#include "PatternError.h"
#include "Pcre2Expression.h"

namespace {

using namespace QorCliMatching;
using Answer = PlainExpression::Answer;

bool hasJit() {
  std::uint32_t has = 0;
  pcre2_config(PCRE2_CONFIG_JIT, &has);
  return has != 0;
}

TEST(PlainExpressionTest, FindsTheFirstMatchFromAPlaceOn) {
  if (!hasJit()) GTEST_SKIP() << "PCRE2 has no JIT compiler here";
  PlainExpression const expression("ab|cde", false, true);
  EXPECT_EQ(Answer::kMatch, expression.match("xabcde"));
  EXPECT_EQ(1U, expression.begin());
  EXPECT_EQ(3U, expression.end());
  EXPECT_EQ(Answer::kMatch, expression.match("xabcde", 2));
  EXPECT_EQ(3U, expression.begin());
  EXPECT_EQ(6U, expression.end());
  EXPECT_EQ(Answer::kNoMatch, expression.match("xabcde", 4));
  EXPECT_EQ(Answer::kNoMatch, expression.match("xABcd"));
}

TEST(PlainExpressionTest, IgnoresCase) {
  if (!hasJit()) GTEST_SKIP() << "PCRE2 has no JIT compiler here";
  EXPECT_EQ(Answer::kMatch, PlainExpression("aB", true, false).match("xAb"));
}

// With callouts, the pattern is too large; it is matched within a number of
// steps, from one start offset after the other.
TEST(TimedExpressionTest, TriesEveryStartOffset) {
  TimedExpression expression("b(?:" + std::string(20000, 'a') + "|c|z)", false);
  TimeBudget budget(10);
  EXPECT_TRUE(expression.matches("bz", budget));
  EXPECT_TRUE(expression.matches("xxbc", budget));
  EXPECT_FALSE(expression.matches("xxb", budget));
  EXPECT_FALSE(expression.matches("", budget));
  TimeBudget none(0);
  EXPECT_THROW(expression.matches("bz", none), PatternError);
}

TEST(TimedExpressionTest, FoldsFewRangesOfUtf8Only) {
  std::string const most = "(*UTF)" + std::string(64, '-');
  EXPECT_NO_THROW(TimedExpression(most, true));
  EXPECT_THROW(TimedExpression(most + '-', true), PatternError);
  EXPECT_NO_THROW(TimedExpression(most + '-', false));
  EXPECT_THROW(TimedExpression("(*UTF)(?i)" + std::string(65, '-'), false),
               PatternError);
  EXPECT_NO_THROW(TimedExpression(std::string(65, '-'), true));
}

struct TakesRow {
  char const* item;
  char c;
  bool ignoreCase;
  bool matches;
};

TEST(MatchesCharacter, LooksAtOneItem) {
  for (TakesRow const& row :
       {TakesRow{"a", 'a', false, true}, TakesRow{"a", 'A', false, false},
        TakesRow{"a", 'A', true, true}, TakesRow{"\\d", '5', false, true},
        TakesRow{"\\d", 'x', false, false}, TakesRow{"[^b]", 'b', false, false},
        TakesRow{"[^b]", 'B', false, true},
        TakesRow{"[^b]", 'B', true, false}}) {
    EXPECT_EQ(row.matches, matchesCharacter(row.item, row.c, row.ignoreCase))
        << row.item << ' ' << row.c;
  }
}

}  // namespace
