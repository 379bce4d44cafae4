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

TEST(PlainExpressionTest, FindsTheFirstMatchFromAnOffset) {
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

// The pattern is too large for callouts, so it is matched with a match limit,
// one start offset at a time.
TEST(TimedExpressionTest, TriesEveryStartOffset) {
  TimedExpression expression("b(?:" + std::string(20000, 'a') + "|c|z|[]y])",
                             false);
  TimeBudget budget(10);
  EXPECT_TRUE(expression.matches("bz", budget));
  EXPECT_TRUE(expression.matches("xxbc", budget));
  EXPECT_TRUE(expression.matches("by", budget));
  EXPECT_FALSE(expression.matches("xxb", budget));
  EXPECT_FALSE(expression.matches("", budget));
  TimeBudget none(0);
  EXPECT_THROW(expression.matches("bz", none), PatternError);
}

TEST(TimedExpressionTest, LimitsCaselessRangesInUtf8) {
  std::string const limit = "(*UTF)" + std::string(64, '-');
  EXPECT_NO_THROW(TimedExpression(limit, true));
  EXPECT_THROW(TimedExpression(limit + '-', true), PatternError);
  EXPECT_NO_THROW(TimedExpression(limit + '-', false));
  EXPECT_THROW(TimedExpression("(*UTF)(?i)" + std::string(65, '-'), false),
               PatternError);
  EXPECT_NO_THROW(TimedExpression(std::string(65, '-'), true));
}

struct MatchesRow {
  char const* item;
  char c;
  bool ignoreCase;
  bool matches;
};

TEST(MatchesCharacter, OfASingleItem) {
  for (MatchesRow const& row :
       {MatchesRow{"a", 'a', false, true}, MatchesRow{"a", 'A', false, false},
        MatchesRow{"a", 'A', true, true}, MatchesRow{"\\d", '5', false, true},
        MatchesRow{"\\d", 'x', false, false},
        MatchesRow{"[^b]", 'b', false, false},
        MatchesRow{"[^b]", 'B', false, true},
        MatchesRow{"[^b]", 'B', true, false}}) {
    EXPECT_EQ(row.matches, matchesCharacter(row.item, row.c, row.ignoreCase))
        << row.item << ' ' << row.c;
  }
}

}  // namespace
