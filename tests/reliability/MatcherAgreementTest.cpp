#include <Poco/Exception.h>
#include <Poco/RegularExpression.h>
#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "LineMatcher.h"
#include "RandomPattern.h"
#include "Seed.h"
#include "SmallStack.h"

namespace qor_test {
namespace {

using Poco::RegularExpression;
using QorCliPipe::LineMatcher;

int const kPatterns = isSlowRun() ? 4000 : 40000;
constexpr int kLinesPerPattern = 6;

// Whether Poco is built on PCRE, and not on PCRE2.
constexpr bool kFirstPcre = QOR_FIRST_PCRE != 0;

using Expression = std::unique_ptr<RegularExpression const>;
using Matcher = std::unique_ptr<LineMatcher>;

// A line feed ends a line within a text; some versions of Poco take a carriage
// return for that when they are not told.
int optionsFor(bool ignoreCase) {
  return RegularExpression::RE_NEWLINE_LF |
         (ignoreCase ? RegularExpression::RE_CASELESS : 0);
}

// Null when the pattern is refused.
Expression expressionOf(std::string const& pattern, int options) {
  try {
    return std::make_unique<RegularExpression>(pattern, options, true);
  } catch (Poco::RegularExpressionException const&) {
    return nullptr;
  }
}

Matcher matcherOf(std::string const& pattern, bool ignoreCase) {
  try {
    return std::make_unique<LineMatcher>(pattern, ignoreCase);
  } catch (Poco::RegularExpressionException const&) {
    return nullptr;
  }
}

// As the pattern, but gives up before the stack of the thread is used up, which
// Poco does not care about, and long before the matcher may give up.
Expression searchOf(std::string const& pattern, int options) {
  return expressionOf("(*LIMIT_RECURSION=8000)(*LIMIT_MATCH=1000000)" + pattern,
                      options);
}

// Whether what is found in the line is not empty; nothing when the search is
// given up.
std::optional<bool> found(RegularExpression const& expression,
                          std::string const& line) {
  try {
    std::string matched;
    expression.extract(line, matched, 0);
    return !matched.empty();
  } catch (Poco::Exception const&) {
    return std::nullopt;
  }
}

std::optional<bool> found(LineMatcher& matcher, std::string const& line) {
  try {
    return matcher.matches(line);
  } catch (Poco::RegularExpressionException const&) {
    return std::nullopt;
  }
}

struct Count {
  int refused = 0;  // patterns
  int givenUp = 0;  // pairs that Poco gave up on
  int matched = 0;  // pairs
  int unmatched = 0;
};

class MatcherAgreement : public testing::Test {
 protected:
  void comparePattern(std::string const& pattern, bool ignoreCase) {
    Expression const expression = expressionOf(pattern, optionsFor(ignoreCase));
    Matcher const matcher = matcherOf(pattern, ignoreCase);
    ASSERT_EQ(expression == nullptr, matcher == nullptr) << pattern;
    if (!expression) {
      ++count_.refused;
      return;
    }
    Expression const search = searchOf(pattern, optionsFor(ignoreCase));
    ASSERT_NE(nullptr, search) << pattern;
    for (int i = 0; i < kLinesPerPattern; ++i) {
      compareLine(*search, *matcher, source_.line());
      ASSERT_FALSE(HasFailure()) << pattern << " ignoring case " << ignoreCase;
    }
  }

  void compareLine(RegularExpression const& expression, LineMatcher& matcher,
                   std::string const& line) {
    std::optional<bool> const expected = found(expression, line);
    if (!expected) {
      ++count_.givenUp;
      return;
    }
    ++(*expected ? count_.matched : count_.unmatched);
    EXPECT_EQ(expected, found(matcher, line)) << testing::PrintToString(line);
  }

  std::mt19937 random_{testSeed()};
  RandomPattern source_{random_};
  Count count_;
};

TEST_F(MatcherAgreement, OnRandomPatternsAndLines) {
  for (int i = 0; i < kPatterns; ++i) {
    comparePattern(source_.pattern(), source_.below(3) == 0);
    ASSERT_FALSE(HasFailure());
  }
  std::cout << count_.refused << " patterns refused; lines: " << count_.matched
            << " matched, " << count_.unmatched << " not, " << count_.givenUp
            << " given up" << std::endl;
  EXPECT_GT(count_.refused, kPatterns / 20);
  EXPECT_GT(count_.matched, kPatterns / 2);
  EXPECT_GT(count_.unmatched, kPatterns);
  EXPECT_LT(count_.givenUp, count_.matched / 3);
}

// ---- Cases that a random pattern meets too seldom

struct PatternCase {
  char const* pattern;
  char const* line;
  bool matches;
};

std::ostream& operator<<(std::ostream& out, PatternCase const& patternCase) {
  return out << patternCase.pattern << " on " << patternCase.line;
}

class ChosenPattern : public testing::TestWithParam<PatternCase> {};

TEST_P(ChosenPattern, IsFoundAsPocoFindsIt) {
  Expression const expression =
      expressionOf(GetParam().pattern, optionsFor(false));
  ASSERT_NE(nullptr, expression);
  ASSERT_EQ(GetParam().matches, found(*expression, GetParam().line));
  LineMatcher matcher(GetParam().pattern, false);
  EXPECT_EQ(GetParam().matches, matcher.matches(GetParam().line));
}

INSTANTIATE_TEST_SUITE_P(KeptOut, ChosenPattern,
                         testing::Values(PatternCase{"ab\\K", "xab", false},
                                         PatternCase{"a\\Kb", "xab", true}));

INSTANTIATE_TEST_SUITE_P(CarriageReturns, ChosenPattern,
                         testing::Values(PatternCase{"a$", "a\r", false},
                                         PatternCase{"^.b", "\rb", true},
                                         PatternCase{"(?m)^b", "a\rb", false},
                                         PatternCase{"(*CR)(?m)^b", "a\rb",
                                                     true},
                                         PatternCase{".*b$", "a\rb", true},
                                         PatternCase{"a\\R", "a\r", true}));

INSTANTIATE_TEST_SUITE_P(
    Utf8, ChosenPattern,
    testing::Values(PatternCase{"(*UTF8)^.$", "\xC3\xA4", true},
                    PatternCase{"^.$", "\xC3\xA4", false},
                    PatternCase{"^..$", "\xC3\xA4", true},
                    PatternCase{"(*UTF8)(?i)\xC3\xA4", "\xC3\x84", true},
                    PatternCase{"(*UTF8)\\x{20ac}", "\xE2\x82\xAC", true},
                    PatternCase{"(*UTF8)(*UCP)^\\w$", "\xC3\xA4", true}));

INSTANTIATE_TEST_SUITE_P(
    Starts, ChosenPattern,
    testing::Values(PatternCase{"(*NO_START_OPT)ab", "xab", true},
                    PatternCase{"(*COMMIT)ab", "xab", true},
                    PatternCase{"(*NO_START_OPT)(*COMMIT)ab", "xab", false},
                    PatternCase{"(*CRLF)a$", "a\r", false},
                    PatternCase{"(*CR)a$", "a\r", true},
                    PatternCase{"(*LIMIT_MATCH=1000000)ab", "xab", true}));

INSTANTIATE_TEST_SUITE_P(
    References, ChosenPattern,
    testing::Values(PatternCase{"^(.+)-\\1$", "ab-ab", true},
                    PatternCase{"^(.+)-\\1$", "ab-ba", false},
                    PatternCase{"(a)?\\1b", "b", false},
                    PatternCase{"(?i)(a)\\1", "aA", true},
                    PatternCase{"(?<n>a)\\k<n>", "aa", true},
                    PatternCase{"(a)(?-1)", "aa", true},
                    PatternCase{"^(a|b(?1)c)$", "bbacc", true},
                    PatternCase{"^(a|b(?1)c)$", "bbac", false},
                    PatternCase{"a(?R)?b", "aabb", true},
                    PatternCase{"(?(DEFINE)(?<n>a+))^(?&n)$", "aaa", true}));

INSTANTIATE_TEST_SUITE_P(LookingAround, ChosenPattern,
                         testing::Values(PatternCase{"(?<=a)b", "ab", true},
                                         PatternCase{"(?<=a)b", "cb", false},
                                         PatternCase{"(?<!a)b", "ab", false},
                                         PatternCase{"(?<=a|bc)d", "bcd", true},
                                         PatternCase{"(?<=^)a", "a", true},
                                         PatternCase{"a(?=b)", "ab", true},
                                         PatternCase{"(?=a)", "a", false},
                                         PatternCase{"\\Ga", "ba", false},
                                         PatternCase{"a*", "ba", false},
                                         PatternCase{"a*$", "ba", true}));

// Where machine code is known to find something else with PCRE, or Poco finds
// what it should not. What PCRE2 says depends on its version; some of these it
// refuses.
class OddPattern : public testing::TestWithParam<PatternCase> {};

TEST_P(OddPattern, IsFoundAsPocoFindsIt) {
  Expression const expression =
      expressionOf(GetParam().pattern, optionsFor(false));
  Matcher const matcher = matcherOf(GetParam().pattern, false);
  ASSERT_EQ(expression == nullptr, matcher == nullptr);
  if (!expression) {
    ASSERT_FALSE(kFirstPcre);
    return;
  }
  std::optional<bool> const expected = found(*expression, GetParam().line);
  EXPECT_TRUE(!kFirstPcre || expected == GetParam().matches);
  EXPECT_EQ(expected, found(*matcher, GetParam().line));
}

INSTANTIATE_TEST_SUITE_P(KeptOutOfLookingAhead, OddPattern,
                         testing::Values(PatternCase{"(?=ab\\K)", "xaby", true},
                                         PatternCase{"(?=ab\\K)", "xab", false},
                                         PatternCase{"(?=a\\K)ab", "xab",
                                                     true}));

INSTANTIATE_TEST_SUITE_P(
    Verbs, OddPattern,
    testing::Values(PatternCase{"(?:b+?(*THEN))c", "Bbc", true},
                    PatternCase{".+(*PRUNE)}|c", "cc", false},
                    PatternCase{"(0*(*SKIP))0|[a]", "0a", false},
                    PatternCase{"a((?=(*THEN)a))?", "a", false},
                    PatternCase{"((?=(*THEN)W)){0,}a", "a", false}));

INSTANTIATE_TEST_SUITE_P(
    PossessiveGroups, OddPattern,
    testing::Values(PatternCase{"(?:\\X|)?+.", "b", true},
                    PatternCase{"(?i:A((?:.|)?+A))", "aa", true},
                    PatternCase{"(?<n>)*+c|(?(1)AA?)", "bb A", false},
                    PatternCase{"(?<n>c{2,}|(?(1)a))*+ab", "Ac ab", true},
                    PatternCase{"(?i)(?<n>c)*+\\w(?P=n)", "Cabc", false}));

INSTANTIATE_TEST_SUITE_P(
    LookingAheadOverAll, OddPattern,
    testing::Values(PatternCase{"(?=(.*)).b", "Axb", false},
                    PatternCase{"(?=.*).b", "Axb", false},
                    PatternCase{"(?=\\N*).b", "Axb", false},
                    PatternCase{"(?=.{0,}).b", "Axb", false}));

INSTANTIATE_TEST_SUITE_P(
    CalledGroups, OddPattern,
    testing::Values(PatternCase{"(a*)b|(?1)", " b", false},
                    PatternCase{"(b*)c|\\x61\\g<1>{2}", "a", true},
                    PatternCase{"\\g<1>z|(\\.*b)", "b", true},
                    PatternCase{"(?<n>\\N++)a|(?&n)", "-", true},
                    PatternCase{"((?:([^a]*+))b)|(?2)", "-", true}));

INSTANTIATE_TEST_SUITE_P(
    GroupsThatMayBeEmpty, OddPattern,
    testing::Values(PatternCase{"(?>(?||)()a|)a", "a", true},
                    PatternCase{"(?i)(?<n>(?:a(?:)?|){0,2}|\\k<n>)A", "a",
                                true}));

// Where one repetition is taken to leave nothing for the next.
INSTANTIATE_TEST_SUITE_P(RepetitionsInARow, OddPattern,
                         testing::Values(PatternCase{"(b+)(a)?+b", "bb", false},
                                         PatternCase{"b*(})?+b", "b", false},
                                         PatternCase{"(*LF)(.+\\R)", "a\r",
                                                     false},
                                         PatternCase{".+\\R", "a\r", false}));

class RefusedPattern : public testing::TestWithParam<char const*> {};

TEST_P(RefusedPattern, IsRefusedByBoth) {
  ASSERT_EQ(nullptr, expressionOf(GetParam(), optionsFor(false)));
  EXPECT_THROW(LineMatcher(GetParam(), false),
               Poco::RegularExpressionException);
}

INSTANTIATE_TEST_SUITE_P(Malformed, RefusedPattern,
                         testing::Values("(", ")", "[", "a**b", "\\", "(?<=a*)",
                                         "(?1)", "(?<n", "(?P>x)", "[[:x:]]",
                                         "a{2,1}", "(*NONE)", "(?<n>a)(?<n>b)",
                                         "(*UTF8)\xFF", "\\g{9}", "(?z)",
                                         "(*UTF8)[\\x{110000}]"));

// ---- More groups than Poco can report

std::string groups(std::size_t count) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) result += "(a)";
  return result;
}

TEST(ManyGroups, AreNoErrorAndFindTheSame) {
  for (std::size_t const count : {19U, 20U, 21U, 22U, 50U, 300U}) {
    LineMatcher matcher(groups(count), false);
    EXPECT_TRUE(matcher.matches('x' + std::string(count, 'a'))) << count;
    EXPECT_FALSE(matcher.matches(std::string(count - 1, 'a'))) << count;
  }
}

TEST(ManyGroups, CanBeReferredTo) {
  LineMatcher matcher(groups(21) + "(b|c)\\22$", false);
  EXPECT_TRUE(matcher.matches(std::string(21, 'a') + "bb"));
  EXPECT_FALSE(matcher.matches(std::string(21, 'a') + "bc"));
}

// What needs the text of a group, or the group itself, with machine code and
// without. Poco would do with fewer groups in front.
TEST(ManyGroups, CanBeUsedInEveryWay) {
  for (std::size_t const count : {3U, 18U, 21U, 40U}) {
    std::string const as(count, 'a');
    std::string const next = std::to_string(count + 1);
    std::string const ends[] = {"(b|c)\\" + next + "$",
                                "(?<n>b|c)\\k<n>$",
                                "(?<n>b|c)(?P=n)$",
                                "(?:(b)|c)(?(" + next + ")b|c)$",
                                "(?:(b)|c)?+(?(" + next + ")b|c)$",
                                "(?<n>b|c)(?=\\g{n}$|x)\\g{n}$",
                                "((b|c)|x(?-2)y)\\g{-1}$"};
    for (std::string const& end : ends) {
      for (char const* begin : {"", "(*UTF8)", "(*NO_START_OPT)"}) {
        std::string const pattern = begin + groups(count) + end;
        LineMatcher matcher(pattern, false);
        EXPECT_EQ(true, found(matcher, as + "bb")) << pattern;
        EXPECT_EQ(true, found(matcher, as + "cc")) << pattern;
        EXPECT_EQ(false, found(matcher, as + "bc")) << pattern;
        EXPECT_EQ(false, found(matcher, as + "b\x12")) << pattern;
      }
    }
  }
}

// There is no machine code for lines in UTF-8.
TEST(ManyGroups, AreNoErrorWithoutMachineCode) {
  LineMatcher matcher("(*UTF8)" + groups(21) + "\xC3\xA4", false);
  EXPECT_TRUE(matcher.matches(std::string(21, 'a') + "\xC3\xA4"));
  EXPECT_FALSE(matcher.matches(std::string(21, 'a') + "\xC3\x84"));
  EXPECT_FALSE(found(matcher, std::string(21, 'a') + "\xC3").has_value());
}

// From one beginning after the other, and under a limit.
TEST(ManyGroups, AreFoundInLongLinesWithoutMachineCode) {
  std::string const line(isSlowRun() ? 40000 : 100000, 'b');
  LineMatcher matcher("(*UTF8)" + groups(21) + "b*c", false);
  EXPECT_EQ(true, found(matcher, line + std::string(21, 'a') + "bc"));
  EXPECT_EQ(false, found(matcher, line + std::string(21, 'a') + "bd"));
  LineMatcher hostile("(*UTF8)" + groups(21) + "(a+)+[cd]", false);
  EXPECT_FALSE(found(hostile, std::string(100, 'a')).has_value());
}

// ---- Long lines

// The same line again and again, in front of what decides.
TEST(LongLine, IsFoundAsTheShortOneIs) {
  for (std::size_t const length : {100U, 10000U, 200000U}) {
    std::string const line(length, 'a');
    LineMatcher matcher("^(?:(a)|b)*\\1c$", false);
    EXPECT_TRUE(matcher.matches(line + "c")) << length;
    EXPECT_FALSE(matcher.matches(line + "bc")) << length;
    EXPECT_FALSE(matcher.matches("b" + line)) << length;
  }
}

// A work of many steps from one beginning, that Poco does, too.
TEST(LongLine, IsDecidedWhereItTakesManySteps) {
  LineMatcher matcher("x.*.*.*[yz]", false);
  for (std::size_t const length : {60U, isSlowRun() ? 90U : 150U}) {
    EXPECT_EQ(false, found(matcher, std::string(length, 'x'))) << length;
    EXPECT_EQ(true, found(matcher, std::string(length, 'x') + 'y')) << length;
  }
}

// Likewise, where the line cannot be searched beginning by beginning.
TEST(LongLine, IsDecidedAsAWholeWhereItTakesManySteps) {
  for (char const* pattern : {"\\G(a+)+$", "(*COMMIT)(a+)+$"}) {
    LineMatcher matcher(pattern, false);
    std::string const as(17, 'a');
    EXPECT_EQ(false, found(matcher, as + std::string(150, 'b'))) << pattern;
    EXPECT_EQ(true, found(matcher, as)) << pattern;
  }
}

// Where there is no machine code, for lack of it or because it finds something
// else.
TEST(LongLine, IsFoundWithoutMachineCode) {
  // A slow run has not the time for the longest.
  std::size_t const longest = isSlowRun() ? 50000 : 200000;
  for (std::size_t const length :
       {std::size_t{1000}, std::size_t{30000}, std::size_t{40000}, longest}) {
    std::string const line = std::string(length, 'b') + std::string(50, 'a');
    for (char const* pattern :
         {"(*UTF8)a+c", "(*NO_START_OPT)a+c", "(*UTF8)(*UCP)ba+c$",
          "(?<n>a)a+\\k<n>c", "(?:ba|a)?+a*c", "(?:(a)|x(?1)y)+c",
          "(*UTF8)\xC3\xA4?a++c"}) {
      LineMatcher matcher(pattern, false);
      EXPECT_EQ(true, found(matcher, line + "c")) << pattern << ' ' << length;
      EXPECT_EQ(false, found(matcher, line + "d")) << pattern << ' ' << length;
    }
  }
}

// A match begins between characters, and never in one.
TEST(LongLine, InUtf8IsSearchedCharacterByCharacter) {
  std::string line;
  while (line.size() < 100000) line += "\xE2\x82\xAC";
  for (char const* pattern : {"(*UTF8)a*\\x{20ac}b", "(*UTF8)x?+..b$",
                              "(*UTF8)(?:\\x{ac}|\\x{20ac}b)+"}) {
    LineMatcher matcher(pattern, false);
    EXPECT_EQ(true, found(matcher, line + "b")) << pattern;
    EXPECT_EQ(false, found(matcher, line + "c")) << pattern;
  }
}

TEST(LongLine, InUtf8HasNoMatchThatBeginsInACharacter) {
  std::string line;
  while (line.size() < 100000) line += "\xE2\x82\xAC";
  LineMatcher matcher("(*UTF8)a*[\\x{80}-\\x{82}]", false);
  EXPECT_EQ(false, found(matcher, line));
  EXPECT_EQ(true, found(matcher, line + "\xC2\x82"));
}

// Poco tries the beginning of the line only; with PCRE2 it tries all of them
// where nothing but a look ahead stands there.
TEST(LongLine, MayHaveOneBeginningOnly) {
  std::string const line = "A" + std::string(100000, 'x') + "b";
  std::vector<char const*> patterns = {"^.b", "(*UTF8)^.b"};
  if (kFirstPcre)
    patterns.insert(patterns.end(), {"(?=.*).b", "(*UTF8)(?=.*).b"});
  for (char const* pattern : patterns) {
    LineMatcher matcher(pattern, false);
    EXPECT_EQ(false, found(matcher, line)) << pattern;
    EXPECT_EQ(true, found(matcher, "xb" + line)) << pattern;
  }
}

TEST(LongLine, ThatIsNotInUtf8IsGivenUpOn) {
  LineMatcher matcher("(*UTF8)a", false);
  EXPECT_FALSE(found(matcher, "a\xFF").has_value());
  EXPECT_EQ(true, found(matcher, "xa"));
}

}  // namespace
}  // namespace qor_test
