#include <Poco/RegularExpression.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "CompileDemand.h"
#include "JitExpression.h"

namespace qor_test {
namespace {

using QorCliPipe::compileDemand;

constexpr std::size_t kNoLimit = 10'000'000;

std::size_t callReach(std::string const& pattern, std::size_t limit) {
  return compileDemand(pattern, limit).reach;
}

// ---- What is read when calls are followed

// What is read: the pattern's length, that of each group a call leads to, and
// what these lead to in turn; times one more than parentheses are nested, those
// of calls included.
struct Reach {
  char const* pattern;
  std::size_t characters;
};

std::ostream& operator<<(std::ostream& out, Reach const& reach) {
  return out << reach.pattern;
}

class CallReach : public testing::TestWithParam<Reach> {};

TEST_P(CallReach, CountsTheGroupsThatAreCalled) {
  EXPECT_EQ(GetParam().characters, callReach(GetParam().pattern, kNoLimit));
}

INSTANTIATE_TEST_SUITE_P(WithoutCalls, CallReach,
                         testing::Values(Reach{"", 0}, Reach{"a", 0},
                                         Reach{"(?-i)(?=a)(?!b)", 0},
                                         Reach{"\\(?1", 0},
                                         Reach{"[(?1)](a)", 0},
                                         Reach{"\\Q(?1)\\E(a)", 0}));

// Groups of different lengths, so that it shows which one is called.
INSTANTIATE_TEST_SUITE_P(
    FormsOfCalls, CallReach,
    testing::Values(Reach{"(aa)(b)(?1)", (11 + 4) * 2},
                    Reach{"(aa)(b)(?2)", (11 + 3) * 2},
                    Reach{"(aa)(b)(?-1)", (12 + 3) * 2},
                    Reach{"(aa)(b)(?-2)", (12 + 4) * 2},
                    Reach{"(?+1)(aa)(b)", (12 + 4) * 2},
                    Reach{"(?+2)(aa)(b)", (12 + 3) * 2},
                    Reach{"(aa)(b)\\g<1>", (12 + 4) * 2},
                    Reach{"(aa)(b)\\g'-1'", (13 + 3) * 2},
                    Reach{"(aa)(?<n>b)(?&n)", (16 + 7) * 2},
                    Reach{"(aa)(?P<n>b)(?P>n)", (18 + 8) * 2},
                    Reach{"(aa)(?'n'b)\\g<n>", (16 + 7) * 2}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, CallReach,
    testing::Values(Reach{"(?:aaa)(b)(?1)", (14 + 3) * 2},
                    Reach{"(?=aaa)(b)(?1)", (14 + 3) * 2},
                    Reach{"(?<=aaa)(b)(?1)", (15 + 3) * 2},
                    Reach{"(*FAIL)(b)(?1)", (14 + 3) * 2},
                    Reach{"(aa)?(?(1)b|c)(d)(?2)", (21 + 3) * 3},
                    Reach{"\\(?(aa)(?1)", (11 + 4) * 2},
                    Reach{"[(](b)(?1)", (10 + 3) * 2},
                    Reach{"[^]()](b)(?1)", (13 + 3) * 2},
                    Reach{"[[:alpha:](](b)(?1)", (19 + 3) * 2},
                    Reach{"[\\](](b)(?1)", (12 + 3) * 2},
                    Reach{"\\Q(\\E(b)(?1)", (12 + 3) * 2}));

INSTANTIATE_TEST_SUITE_P(
    Ways, CallReach,
    testing::Values(Reach{"(a)(?1)(?1)", (11 + 3 + 3) * 2},
                    Reach{"(a(?2))(b)(?1)", (14 + 3 + 7 + 3) * 3},
                    Reach{"a(?R)?", 6 * 2}, Reach{"(a(?1)?)", (8 + 8) * 3},
                    Reach{"((a)(?2))(?1)", (13 + 3 + 9 + 3) * 3},
                    Reach{"(a(?2)?)(b(?1)?)", (16 + 8 + 8 + 8 + 8) * 3}));

INSTANTIATE_TEST_SUITE_P(HiddenTexts, CallReach,
                         testing::Values(Reach{"(aa)#(b)(?1)", (12 + 4) * 2},
                                         Reach{"(?#()(b)(?1)", (12 + 3) * 2},
                                         Reach{"(*:()(b)(?1)", (12 + 3) * 2},
                                         Reach{"(?x)#(\n(b)(?1)", (14 + 3) * 2},
                                         Reach{"[\\Q](\\E](b)(?1)",
                                               (15 + 3) * 2},
                                         Reach{"(?#(?1))(b)", 0}));

// References to the text of a group are no calls.
INSTANTIATE_TEST_SUITE_P(
    References, CallReach,
    testing::Values(Reach{"(aa)(b)\\1", 0}, Reach{"(aa)(b)\\g1", 0},
                    Reach{"(aa)(b)\\g{-1}", 0}, Reach{"(?<n>aa)\\k<n>", 0},
                    Reach{"(?<n>aa)\\k'n'", 0}, Reach{"(?<n>aa)\\g{n}", 0},
                    Reach{"(?<n>aa)(?P=n)", 0}, Reach{"(a)\\2\\g\\k\\g-", 0}));

INSTANTIATE_TEST_SUITE_P(Names, CallReach,
                         testing::Values(Reach{"(?<R>aa)(?&R)", (13 + 8) * 2},
                                         Reach{"(?<R>aa)\\g<R>(?R)",
                                               (17 + 8) * 2}));

// Each copy is read, and the calls in it followed.
INSTANTIATE_TEST_SUITE_P(
    Copies, CallReach,
    testing::Values(Reach{"(aa)(?1){5}", (11 + 4 * 4 + 5 * 4) * 2},
                    Reach{"(aa)((?1)b){5}", (14 + 4 * 7 + 5 * 4) * 3},
                    Reach{"(aa)((?1){2}){3,5}", (18 + 4 + 4 * 13 + 10 * 4) * 5},
                    Reach{"(?2)((aa){7})((?1)){2}",
                          (22 + 6 * 4 + 6 + 4 + 2 * (9 + 6 * 4)) * 3},
                    Reach{"(aa){9}(?1)", (11 + 8 * 4 + 4) * 2}));

// Each alternative counts from the same number on.
INSTANTIATE_TEST_SUITE_P(
    SharedNumbers, CallReach,
    testing::Values(Reach{"(?|(aa)|(b))(ccc)(?1)", (21 + 4) * 3},
                    Reach{"(?|(aa)|(b))(ccc)(?2)", (21 + 5) * 3},
                    Reach{"(?|(aa)(b)|(c))(ddd)(?3)", (24 + 5) * 3},
                    Reach{"(?|(a)|(bb)(cc))(ddd)(?3)", (25 + 5) * 3},
                    Reach{"(?|(a|(bb)))(ddd)(?3)", (21 + 5) * 4},
                    Reach{"(?|(?|(a)|(b))|(c))(ddd)(?2)", (28 + 5) * 4},
                    Reach{"(?|(aa)|(b)(?-1))", (17 + 4) * 3},
                    Reach{"(?|(a)|(?+1)(b))", (16 + 3) * 3},
                    Reach{"(a)|(bb)(?2)", (12 + 4) * 2}));

// A call of a name that several groups have stands for the whole pattern.
INSTANTIATE_TEST_SUITE_P(
    SharedNames, CallReach,
    testing::Values(Reach{"(?<n>a)(?<n>b)(?&n)", (19 + 19) * 2},
                    Reach{"(?<n>a)(?<n>b)(?1)", (18 + 7) * 2}));

// A call of a group that is not there leads nowhere.
INSTANTIATE_TEST_SUITE_P(
    NoGroups, CallReach,
    testing::Values(Reach{"(a)(?2)", 0}, Reach{"(a)(?-3)", 0},
                    Reach{"(a)(?+1)", 0}, Reach{"(?<n>a)(?&m)", 0},
                    Reach{"(a)(?2)(?1)", (11 + 3) * 2},
                    Reach{"(a)(?99999999999999999999)", 0},
                    Reach{"(a)(?1)[", 0}, Reach{"(a)(?1)(", 0},
                    Reach{"(a)(?1)(?#", 0}));

// The library does not read on behind a parenthesis that closes nothing.
INSTANTIATE_TEST_SUITE_P(StrayEnds, CallReach,
                         testing::Values(Reach{"(a)(?1))", (8 + 3) * 2},
                                         Reach{"(a)(?1))(", (9 + 3) * 2},
                                         Reach{"(a)(?1))[", (9 + 3) * 2},
                                         Reach{"(a)(?1))(?1)", (12 + 3) * 2}));

// Where the text may be misread, a call stands for the whole pattern, and for
// the other calls in it.
INSTANTIATE_TEST_SUITE_P(Unsure, CallReach,
                         testing::Values(Reach{"(?xx)(a)(?1)[ ]", 15 * 2 * 5},
                                         Reach{"(?n)(a)(b)(?1)", 14 * 2 * 2},
                                         Reach{"(?xx)(a)(?1)(?2)[ ]",
                                               19 * 5 * 6}));

// A call that does not end within a reasonable length may lead anywhere; what
// is open at the pattern's end is no call.
TEST(CallReach, OfACallThatIsTooLongIsTheLimit) {
  EXPECT_EQ(kNoLimit,
            callReach("(a)(?" + std::string(200, '0') + "1)", kNoLimit));
  EXPECT_LT(callReach("[(*8(?3([^\\]x]", kNoLimit), kNoLimit);
  EXPECT_LT(callReach("(a)(?1", kNoLimit), kNoLimit);
}

TEST(CallReach, IsCountedUpToTheLimit) {
  EXPECT_EQ(20U, callReach("(a)(?1)", kNoLimit));
  EXPECT_EQ(20U, callReach("(a)(?1)", 21));
  EXPECT_EQ(19U, callReach("(a)(?1)", 19));
  EXPECT_EQ(0U, callReach("(a)(?1)", 0));
}

// Each of the groups calls the next one twice.
TEST(CallReach, DoublesWithEachGroup) {
  std::string pattern;
  for (int group = 2; group <= 60; ++group) {
    std::string const call = "(?" + std::to_string(group) + ")";
    pattern += "(a?" + call + call + ")";
  }
  EXPECT_EQ(kNoLimit, callReach(pattern + "(a)", kNoLimit));
}

TEST(CallReach, OfManyCallsOfOneGroupGrowsWithTheirNumber) {
  std::string pattern = "(a)";
  for (int call = 0; call < 1000; ++call) pattern += "(?1)";
  EXPECT_EQ((pattern.size() + 3000) * 2, callReach(pattern, kNoLimit));
}

// ---- How deeply groups are nested

struct Nesting {
  char const* pattern;
  std::size_t bound;
};

std::ostream& operator<<(std::ostream& out, Nesting const& nesting) {
  return out << nesting.pattern;
}

class NestingBound : public testing::TestWithParam<Nesting> {};

TEST_P(NestingBound, IsThatOfThePattern) {
  EXPECT_EQ(GetParam().bound,
            compileDemand(GetParam().pattern, kNoLimit).levels);
}

INSTANTIATE_TEST_SUITE_P(
    Groups, NestingBound,
    testing::Values(Nesting{"", 0}, Nesting{"a", 0}, Nesting{"(a)", 1},
                    Nesting{"(a)(b)", 1}, Nesting{"((a)(b))", 2},
                    Nesting{"(?:(?=(a)))", 3}, Nesting{"(((", 3},
                    Nesting{")))", 0}, Nesting{"))((", 0}));

INSTANTIATE_TEST_SUITE_P(
    NoGroups, NestingBound,
    testing::Values(Nesting{"\\(\\(", 0}, Nesting{"[((]", 0},
                    Nesting{"[](]", 0}, Nesting{"[^](]", 0},
                    Nesting{"[\\](]", 0}, Nesting{"[[:alpha:](]", 0},
                    Nesting{"\\Q((\\E", 0}, Nesting{"\\Q((", 0},
                    Nesting{"\\c((", 1}, Nesting{"\\", 0},
                    Nesting{"(?#[)((]a))", 2}, Nesting{"(*:[)((]a))", 2},
                    Nesting{"(?#\\Q)((a))", 2}, Nesting{"(a)(b)#", 1},
                    Nesting{"[\\Q]\\E](a)(b)", 1}));

// A ")" that may close no group is not taken to close one.
INSTANTIATE_TEST_SUITE_P(HardToRead, NestingBound,
                         testing::Values(Nesting{"(?C'(')((a))", 2},
                                         Nesting{"(?[(])(a)", 1},
                                         Nesting{"(*UTF8)(a)(b)", 1},
                                         Nesting{"[(", 2}, Nesting{"[[(", 2},
                                         Nesting{"[[:a(", 2}));

// A call stands for the group, a call in that for the next, and counts itself.
INSTANTIATE_TEST_SUITE_P(
    Calls, NestingBound,
    testing::Values(Nesting{"(a)(?1)", 2}, Nesting{"(a)\\1", 2},
                    Nesting{"(a)\\g1\\g{1}\\g{-1}", 2},
                    Nesting{"(?R)?(?R)?", 1}, Nesting{"((a))(?1)", 3},
                    Nesting{"(?<n>a)(?&n)(?P>n)", 2},
                    Nesting{"(a)(?:(?:(?1)))", 4},
                    Nesting{"(?1)((?:(?2)))((?:(?3)))(a)", 8},
                    Nesting{"(a)(b\\1)(c\\2)", 3}, Nesting{"(a(?1)?)", 4},
                    Nesting{"((?2))((?1))", 6}));

// Copies that need not be there are nested.
INSTANTIATE_TEST_SUITE_P(
    Copies, NestingBound,
    testing::Values(Nesting{"(a){3}", 1}, Nesting{"(a){3,}", 1},
                    Nesting{"(a){0,3}", 4}, Nesting{"(a){1,3}", 3},
                    Nesting{"((a){0,3}){0,2}", 7}, Nesting{"(a{0,3})", 1},
                    Nesting{"(a)b{0,3}", 1}, Nesting{"(a)*{0,3}", 4},
                    Nesting{"(a)\\E{0,3}", 4}, Nesting{"(a)\\Q\\E{0,3}", 4},
                    Nesting{"(a)\\Qb\\E{0,3}", 1}, Nesting{"(a)(?#b){0,3}", 4},
                    Nesting{"(?x)(a) #b\n {0,3}", 4},
                    Nesting{"(a)(?1){0,3}", 5}, Nesting{"(a)\\g<1>{0,3}", 5},
                    Nesting{"(a)\\1{0,3}", 2}, Nesting{"(a)\\g{1}{0,3}", 2},
                    Nesting{"(a)\\{0,3}", 1}, Nesting{"(a){0,3", 1},
                    Nesting{"(a){0,2}{0,3}", 6},
                    Nesting{"(a){0,99999999999999999999}", 65537},
                    Nesting{"(?:(b)\\1){0,3}", 6}, Nesting{"(b){0,3}\\1", 5},
                    Nesting{"(b){0,3}\\0\\2\\k<n>", 4},
                    Nesting{"(a)(?1)\\1", 4}));

// What is a repetition for the library in use is one here.
TEST(NestingBound, OfLooseRepetitionsIsThatOfTheLibrary) {
  for (std::string const repetition : {"{,3}", "{ 0,3}", "{0 ,3}", "{0,3 }"}) {
    Poco::RegularExpression const expression("^(?:a)" + repetition + '$', 0,
                                             true);
    std::size_t const expected = expression.match("aaa") ? 4 : 1;
    EXPECT_EQ(expected, compileDemand("(a)" + repetition, kNoLimit).levels)
        << repetition;
  }
}

TEST(NestingBound, OfWhatLooksAroundIsThatOfTheLibrary) {
  bool const isCopied = QorCliPipe::JitExpression::kCopiesWhatLooksAround;
  for (std::string const group : {"(?=a)", "(?!a)", "(?<=a)", "(?<!a)"}) {
    EXPECT_EQ(isCopied ? 4U : 1U,
              compileDemand(group + "{0,3}", kNoLimit).levels)
        << group;
  }
}

// ---- Choices

TEST(Choices, AreRepetitionsAndAlternatives) {
  EXPECT_EQ(0U, compileDemand("a(b)[?*|]\\?\\Q|\\E", kNoLimit).choices);
  EXPECT_EQ(5U, compileDemand("a?b*c+d{2}|e", kNoLimit).choices);
  EXPECT_EQ(3U, compileDemand("(a?){2}b?", kNoLimit).choices - 10);
}

// ---- What is gone through for a call

TEST(CallReach, CountsNamesAndGroupsThatFollow) {
  std::string calls;
  for (int i = 0; i < 1000; ++i) calls += "(?1)";
  std::size_t const size = calls.size() + 3;
  EXPECT_EQ(size * 1000, callReach(calls + "(a)", kNoLimit));
  EXPECT_LT(callReach("(a)" + calls, kNoLimit), size * 10);
  std::string names;
  for (int i = 0; i < 1000; ++i) names += "(?<n" + std::to_string(i) + ">)";
  for (int i = 0; i < 1000; ++i) names += "(?&n999)";
  EXPECT_EQ(1000U * 1000U, callReach(names, kNoLimit));
}

}  // namespace
}  // namespace qor_test
