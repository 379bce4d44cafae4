#include <gtest/gtest.h>

#include <string>

#include "PatternError.h"
#include "Pcre2Expression.h"

namespace {

using namespace QorCliMatching;
using Answer = PlainExpression::Answer;

// Where PCRE2 has no JIT compiler, no answer is known.
Answer byJit(Answer answer) {
  std::uint32_t hasJit = 0;
  pcre2_config(PCRE2_CONFIG_JIT, &hasJit);
  return hasJit != 0 ? answer : Answer::kUnknown;
}

// "BEGIN-END" of the match in `text` from `from`, or empty.
std::string matchIn(PlainExpression const& expression, std::string_view text,
                    std::size_t from = 0) {
  if (expression.match(text, from) != Answer::kMatch) return "";
  return std::to_string(expression.begin()) + '-' +
         std::to_string(expression.end());
}

TEST(PlainExpressionTest, AnswersByJit) {
  PlainExpression const expression("ab|cde", false, true);
  EXPECT_EQ(byJit(Answer::kMatch), expression.match("xabcde"));
  EXPECT_EQ(byJit(Answer::kNoMatch), expression.match("xabcde", 4));
  EXPECT_EQ(byJit(Answer::kNoMatch), expression.match("xABcd"));
}

TEST(PlainExpressionTest, FindsTheFirstMatchFromAnOffset) {
  PlainExpression const expression("ab|cde", false, true);
  bool const hasJit = byJit(Answer::kMatch) == Answer::kMatch;
  EXPECT_EQ(hasJit ? "1-3" : "", matchIn(expression, "xabcde"));
  EXPECT_EQ(hasJit ? "3-6" : "", matchIn(expression, "xabcde", 2));
}

TEST(PlainExpressionTest, IgnoresCase) {
  EXPECT_EQ(byJit(Answer::kMatch),
            PlainExpression("aB", true, false).match("xAb"));
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
