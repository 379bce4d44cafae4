#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "PatternReader.h"
#include "Pcre2Expression.h"

namespace {

using namespace QorCliMatching;
using Texts = std::vector<std::string>;

PatternFacts factsOf(std::string const& pattern, bool ignoreCase = false) {
  TimedExpression const expression(pattern, ignoreCase);
  return readPattern(expression.items(pattern), ignoreCase);
}

// ---- Required texts

struct TextRow {
  std::string pattern;
  Texts anyOf;
  bool sufficient;
};

std::ostream& operator<<(std::ostream& out, TextRow const& row) {
  return out << row.pattern;
}

class RequiredText : public testing::TestWithParam<TextRow> {};

TEST_P(RequiredText, IsReadFromThePattern) {
  PatternFacts const facts = factsOf(GetParam().pattern);
  EXPECT_EQ(GetParam().anyOf, facts.anyOf);
  EXPECT_EQ(GetParam().sufficient, facts.sufficient);
}

INSTANTIATE_TEST_SUITE_P(
    PlainTexts, RequiredText,
    testing::Values(TextRow{"error", {"error"}, true},
                    TextRow{"e", {"e"}, true}, TextRow{"a\\.b", {"a.b"}, true},
                    TextRow{"a\\-\\_b", {"a-_b"}, true},
                    TextRow{"ab{", {"ab{"}, true},
                    TextRow{"\xC3\xA4", {"\xC3\xA4"}, true},
                    TextRow{"up|down", {"up", "down"}, true},
                    TextRow{"(up|down)", {"up", "down"}, true},
                    TextRow{"(?<state>up|down)", {"up", "down"}, true},
                    TextRow{"(?:a|b)", {"a", "b"}, true},
                    TextRow{"a|b|c|d|e|f|g|h",
                            {"a", "b", "c", "d", "e", "f", "g", "h"},
                            true}));

INSTANTIATE_TEST_SUITE_P(
    LongestRuns, RequiredText,
    testing::Values(
        TextRow{"link (up|down)$", {"link "}, false},
        TextRow{"retry [0-9]+", {"retry "}, false},
        TextRow{"^ab.*abc\\d", {"abc"}, false},
        TextRow{"abc+d", {"abc"}, false}, TextRow{"xabc*d", {"xab"}, false},
        TextRow{"xabc?", {"xab"}, false}, TextRow{"xabc??d", {"xab"}, false},
        TextRow{"abc{2,3}d", {"abc"}, false},
        TextRow{"abc{0,3}d", {"ab"}, false}, TextRow{"abc{0}d", {"ab"}, false},
        TextRow{"(?:up|fail\\w*)", {"up", "fail"}, false},
        TextRow{"(ab[)]c|cd)", {"ab", "cd"}, false},
        TextRow{"(ab)cd(ef)", {"cd"}, false},
        TextRow{"(a|b)cd|ef(g)?", {"cd", "ef"}, false},
        TextRow{"\\x41bc", {"bc"}, false}, TextRow{"ab\\1(c)", {"ab"}, false},
        TextRow{"(?=ab)cde", {"cde"}, false},
        TextRow{"ab(?!cde)", {"ab"}, false}));

INSTANTIATE_TEST_SUITE_P(
    LongText, RequiredText,
    testing::Values(TextRow{std::string(64, 'a'), {std::string(64, 'a')}, true},
                    TextRow{
                        std::string(65, 'a'), {std::string(64, 'a')}, false}));

INSTANTIATE_TEST_SUITE_P(SingleCharacters, RequiredText,
                         testing::Values(TextRow{"\\d\\.\\d", {"."}, false},
                                         TextRow{"\\d%", {"%"}, false},
                                         TextRow{"\\da\\d", {}, false},
                                         TextRow{"\\d:\\d", {}, false},
                                         TextRow{"\\d-\\d", {}, false},
                                         TextRow{"\\d \\d", {}, false},
                                         TextRow{"ab\\d|\\d:", {}, false}));

INSTANTIATE_TEST_SUITE_P(
    Nothing, RequiredText,
    testing::Values(
        TextRow{"", {}, false}, TextRow{"ab|", {}, false},
        TextRow{"ab|.", {}, false}, TextRow{"(ab)?", {}, false},
        TextRow{"(ab){2}", {}, false}, TextRow{"(ab)(cd)", {}, false},
        TextRow{"((ab))", {}, false}, TextRow{"[a-f]{4}", {}, false},
        TextRow{"a|b|c|d|e|f|g|h|i", {}, false}, TextRow{"(?=ab)", {}, false},
        TextRow{"(?!ab)", {}, false}, TextRow{"(?<=ab)", {}, false}));

INSTANTIATE_TEST_SUITE_P(
    Uncommon, RequiredText,
    testing::Values(
        TextRow{"(*UTF8)ab", {}, false}, TextRow{"\\Qab", {}, false},
        TextRow{"(?#c)ab", {}, false}, TextRow{"(?x)ab", {}, false},
        TextRow{"ab(?i)cd", {}, false}, TextRow{"(?i:ab)", {}, false},
        TextRow{"ab(?(DEFINE)(?<n>c))", {}, false},
        TextRow{"ab(*ACCEPT)cd", {}, false}, TextRow{"ab|(?|cd)", {}, false}));

TEST(CaselessRequiredText, KeepsTheCaseOfThePattern) {
  for (PatternFacts const& facts :
       {factsOf("Link", true), factsOf("(?i)Link")}) {
    EXPECT_TRUE(facts.ignoreCase);
    EXPECT_EQ(Texts{"Link"}, facts.anyOf);
    EXPECT_TRUE(facts.sufficient);
  }
  EXPECT_FALSE(factsOf("Link").ignoreCase);
}

// ---- RE2's syntax

struct RegularRow {
  std::string pattern;
  std::string regular;
};

std::ostream& operator<<(std::ostream& out, RegularRow const& row) {
  return out << row.pattern;
}

class Regular : public testing::TestWithParam<RegularRow> {};

TEST_P(Regular, IsTranslatedToRe2) {
  EXPECT_EQ(GetParam().regular, factsOf(GetParam().pattern).regular);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, Regular,
    testing::Values(
        RegularRow{"a.b", "a.b"},
        RegularRow{"a*?b+|c{2,3}d{4,}?", "a*?b+|c{2,3}d{4,}?"},
        RegularRow{"(a)(?:b)(?<n>c)(?P<m>d)", "(?:a)(?:b)(?:c)(?:d)"},
        RegularRow{"\\s\\S", "[ \\t-\\r][\\x00-\\x08\\x0E-\\x1F!-\\xFF]"},
        RegularRow{"[\\S,]", "[\\x00-\\x08\\x0E-\\x1F!-\\xFF,]"},
        RegularRow{"\\h[\\h,]", "[ \\t\\xA0][ \\t\\xA0,]"},
        RegularRow{"\\H", "[\\x00-\\x08\\n-\\x1F!-\\x9F\\xA1-\\xFF]"},
        RegularRow{"\\x41?", "\\x41?"},
        RegularRow{"\xC3\xA4[\xE4]", "\xC3\xA4[\xE4]"},
        RegularRow{"[\\s,]", "[ \\t-\\r,]"},
        RegularRow{"[^\\s]", "[^ \\t-\\r]"},
        RegularRow{"[[:alpha:]_]", "[[:alpha:]_]"},
        RegularRow{"[[:^alpha:]]", "[[:^alpha:]]"}, RegularRow{"[]a]", "[]a]"},
        RegularRow{"^a$\\b\\B\\A\\z", "^a$\\b\\B\\A\\z"},
        RegularRow{"a\\Z", "a\\z"},
        RegularRow{"\\d\\w\\t\\.\\[", "\\d\\w\\t\\.\\["},
        RegularRow{"(?i)ab", "ab"}));

// ---- Why RE2 is unsuitable

struct ReasonRow {
  std::string pattern;
  std::string reason;
};

std::ostream& operator<<(std::ostream& out, ReasonRow const& row) {
  return out << row.pattern;
}

class Irregular : public testing::TestWithParam<ReasonRow> {};

TEST_P(Irregular, HasAReason) {
  PatternFacts const facts = factsOf(GetParam().pattern);
  EXPECT_EQ("", facts.regular);
  EXPECT_EQ(GetParam().reason, facts.reason);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, Irregular,
    testing::Values(ReasonRow{"(a)\\1", "a back reference"},
                    ReasonRow{"()()()()()()()()(a)\\9", "a back reference"},
                    ReasonRow{"[[:a]", "an uncommon class"},
                    ReasonRow{"(?>a)b", "an atomic group"},
                    ReasonRow{"a++b", "a possessive quantifier"},
                    ReasonRow{"a{1,2}+b", "a possessive quantifier"},
                    ReasonRow{"a{0}b", "a quantifier of zero"},
                    ReasonRow{"a(?=b)", "a lookaround"},
                    ReasonRow{"a(?!b)", "a lookaround"},
                    ReasonRow{"(?<=a)b", "a lookaround"},
                    ReasonRow{"(?<!a)b", "a lookaround"},
                    ReasonRow{"a\\Kb", "an uncommon escape"},
                    ReasonRow{"\\v", "an uncommon escape"},
                    ReasonRow{"\\x41|b", "non-ASCII bytes"},
                    ReasonRow{"a|\xC3\xA4", "non-ASCII bytes"},

                    ReasonRow{"(?i)\xE4", "non-ASCII bytes"}));

INSTANTIATE_TEST_SUITE_P(
    Uncommon, Irregular,
    testing::Values(ReasonRow{"", "uncommon syntax"},
                    ReasonRow{"(*UTF)a", "uncommon syntax"},
                    ReasonRow{"a(?i)b", "uncommon syntax"},
                    ReasonRow{"(?i:a)", "uncommon syntax"},
                    ReasonRow{"a\\\nb", "uncommon syntax"},
                    ReasonRow{"(a)(?1)", "uncommon syntax"},
                    ReasonRow{"(a)?(?(1)b)", "uncommon syntax"},
                    ReasonRow{"\\p{L}", "uncommon syntax"},
                    ReasonRow{"\\x{41}", "uncommon syntax"},
                    ReasonRow{"a{02}", "uncommon syntax"},
                    ReasonRow{"(?x)a b", "uncommon syntax"}));

TEST(RegularPattern, HasAReasonIfBacktrackingIsUnbounded) {
  EXPECT_STREQ("unbounded backtracking", factsOf("(a|b)+c").reason);
  EXPECT_STREQ("", factsOf("(a|b)c+").reason);
}

// ---- Backtracking

constexpr double kBytes = 60;  // of the line

struct StepsRow {
  std::string pattern;
  double steps;  // from one start offset: paths * items on each
  bool ignoreCase = false;
};

std::ostream& operator<<(std::ostream& out, StepsRow const& row) {
  return out << row.pattern;
}

class BoundedBacktracking : public testing::TestWithParam<StepsRow> {};

TEST_P(BoundedBacktracking, IsCounted) {
  Backtracking const backtracking =
      factsOf(GetParam().pattern, GetParam().ignoreCase).backtracking;
  ASSERT_NE(Backtracking::kUnbounded, backtracking.loops);
  EXPECT_DOUBLE_EQ(GetParam().steps, backtracking.steps(kBytes));
}

// Each group adds three steps for its parentheses.
INSTANTIATE_TEST_SUITE_P(OnePath, BoundedBacktracking,
                         testing::Values(StepsRow{"a", 1}, StepsRow{"abc", 3},
                                         StepsRow{"^[ab].$", 4},
                                         StepsRow{"(abc)", 3 + 3},
                                         StepsRow{"(ab){3}", 3 * (2 + 3)},
                                         StepsRow{"a{5}", 6}));

INSTANTIATE_TEST_SUITE_P(
    Choices, BoundedBacktracking,
    testing::Values(StepsRow{"a|bcd", 2 * 3},
                    StepsRow{"(a|b)c", 2 * (1 + 3 + 1)},
                    StepsRow{"(a|b)(c|d|e)", 2 * 3 * 2 * (1 + 3)},
                    StepsRow{"(a|b){3}", 2 * 2 * 2 * 3 * (1 + 3)},
                    StepsRow{"(a){2,4}", 3 * 4 * (1 + 3)},
                    StepsRow{"(ab)?c", 2 * (2 + 3 + 1)},
                    StepsRow{"(a|b){0,2}", 2 * 2 * 3 * 2 * (1 + 3)},
                    StepsRow{"a?.", 2 * 3}, StepsRow{"a{2,4}.", 3 * 6},
                    StepsRow{"a{2,4}?.", 3 * 6}, StepsRow{"a?b?c", 2 * 5}));

// One loop covers half of the line on average, two cover a sixth of its square.
INSTANTIATE_TEST_SUITE_P(
    Loops, BoundedBacktracking,
    testing::Values(StepsRow{"a*.", 30 * 2}, StepsRow{"a+.", 30 * 3},
                    StepsRow{"a{3,}.", 30 * 5}, StepsRow{"x.*.", 30 * 3},
                    StepsRow{"x.*?y", 30 * 3}, StepsRow{".*.*.", 600 * 3},
                    StepsRow{"(a+){2}", 600 * 2 * (2 + 3)},
                    StepsRow{"(a|b+)c", 2 * 30 * (2 + 3 + 1)},
                    StepsRow{"a+b?.", 2 * 30 * 5}));

// If nothing follows, or a character that ends the run, only the whole run can
// match.
INSTANTIATE_TEST_SUITE_P(
    DeterministicRuns, BoundedBacktracking,
    testing::Values(StepsRow{"a*b", 2 + 30}, StepsRow{"a+b", 3 + 30},
                    StepsRow{"a?b", 3}, StepsRow{"\\d{1,3}\\.", 5},
                    StepsRow{"a?", 2}, StepsRow{"a{2,4}", 5},
                    StepsRow{"a*", 1 + 30}, StepsRow{"x.*", 2 + 30},
                    StepsRow{"(\\d{1,3}\\.){3}\\d{1,3}", 3 * (5 + 3) + 4},
                    StepsRow{"\\d+\\.\\d+", 5 + 2 * 30},
                    StepsRow{"[^b]+b", 3 + 30}, StepsRow{"[^b]+B", 30 * 3},
                    StepsRow{"[^b]+B", 3 + 30, true},
                    StepsRow{"a+b*c", 30 * (4 + 30)},
                    StepsRow{"a+(b)", 30 * (3 + 3)}, StepsRow{"a+[b]", 30 * 3},
                    StepsRow{"a+$", 30 * 3}, StepsRow{"(a+)", 30 * (2 + 3)}));

class UnboundedBacktracking : public testing::TestWithParam<char const*> {};

TEST_P(UnboundedBacktracking, IsDetected) {
  EXPECT_EQ(Backtracking::kUnbounded, factsOf(GetParam()).backtracking.loops);
}

INSTANTIATE_TEST_SUITE_P(Loops, UnboundedBacktracking,
                         testing::Values(".*.*.*x", "(a+){3}", "a+(b+|c+c+)",
                                         "(a)+", "(a|b)*c", "(?:a+)+",
                                         "(ab){2,}"));

// JIT code may miss their matches.
INSTANTIATE_TEST_SUITE_P(EmptyAlternatives, UnboundedBacktracking,
                         testing::Values("(1|)b*1", "(|a)b", "(a||b)c", "a|",
                                         "()a", "a(?:)", "(a(|b))c"));

INSTANTIATE_TEST_SUITE_P(NotKnown, UnboundedBacktracking,
                         testing::Values("", "a(?=b)", "(a)\\1", "(?>a)", "a++",
                                         "a\\K", "(*UTF)a"));

// One hexadecimal digit is enough.
INSTANTIATE_TEST_SUITE_P(HexadecimalEscapes, UnboundedBacktracking,
                         testing::Values("\\x41+\\x41+\\x41+\\x41+",
                                         "\\x6+\\x6+\\x6+\\x6+"));

// ---- Other facts

struct FlagRow {
  std::string pattern;
  bool holds;
};

std::ostream& operator<<(std::ostream& out, FlagRow const& row) {
  return out << row.pattern;
}

class JitAgrees : public testing::TestWithParam<FlagRow> {};

TEST_P(JitAgrees, UnlessThePatternHasUnsafeItems) {
  EXPECT_EQ(GetParam().holds, factsOf(GetParam().pattern).jitAgrees);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, JitAgrees,
    testing::Values(FlagRow{"(a|b)+c", true}, FlagRow{"a(?=b)", true},
                    FlagRow{"(?<!a)b", true}, FlagRow{"(?<=a|bc)d", false},
                    FlagRow{"\xC3\xA4", true}, FlagRow{"(a|)b", true},
                    FlagRow{"(?>a)", false}, FlagRow{"a++", false},
                    FlagRow{"(a)\\1", false}, FlagRow{"(a)(?1)", false},
                    FlagRow{"a\\K", false}, FlagRow{"a(*PRUNE)", false},
                    FlagRow{"(*UTF)a", false}));

class IsFixed : public testing::TestWithParam<FlagRow> {};

TEST_P(IsFixed, IfAllMatchesHaveTheSameLength) {
  EXPECT_EQ(GetParam().holds, factsOf(GetParam().pattern).isFixed);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, IsFixed,
    testing::Values(FlagRow{"abc", true}, FlagRow{"[ab]\\d.", true},
                    FlagRow{"a{3}", true}, FlagRow{"(ab){2}", true},
                    FlagRow{"\\ba\\B", true}, FlagRow{"a?", false},
                    FlagRow{"a+", false}, FlagRow{"a{2,3}", false},
                    FlagRow{"a|b", false}, FlagRow{"(ab)?", false},
                    FlagRow{"^a", false}, FlagRow{"a$", false},
                    FlagRow{"\\Aa", false}, FlagRow{"a\\z", false},
                    FlagRow{"a\\Z", false}, FlagRow{"a(?=b)", false},
                    FlagRow{"\\x6+", false}));

class HasLoopAndChoice : public testing::TestWithParam<FlagRow> {};

TEST_P(HasLoopAndChoice, IfThePatternHasBoth) {
  EXPECT_EQ(GetParam().holds, factsOf(GetParam().pattern).hasLoopAndChoice);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, HasLoopAndChoice,
    testing::Values(FlagRow{"(bba|b)(a*?)a", true}, FlagRow{"a|b+", true},
                    FlagRow{"(a)?b+", true}, FlagRow{"(a){1,2}b*", true},
                    FlagRow{"(a|b){2,}", true}, FlagRow{"(a)+", true},
                    FlagRow{"a+b*", false}, FlagRow{"(a+)b?", false},
                    FlagRow{"a|b", false}, FlagRow{"(a)?b", false},
                    FlagRow{"(a){2}b+", false}));

// ---- Items

struct ItemsRow {
  std::string pattern;
  Texts items;
};

std::ostream& operator<<(std::ostream& out, ItemsRow const& row) {
  return out << row.pattern;
}

class Items : public testing::TestWithParam<ItemsRow> {};

TEST_P(Items, AreThoseOfPcre2) {
  TimedExpression const expression(GetParam().pattern, false);
  Texts items;
  for (std::string_view const item : expression.items(GetParam().pattern)) {
    items.emplace_back(item);
  }
  EXPECT_EQ(GetParam().items, items);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, Items,
    testing::Values(
        ItemsRow{"ab", {"a", "b"}},
        ItemsRow{"a+?[b]]{2,3}", {"a+?", "[b]", "]{2,3}"}},
        ItemsRow{"(a|b)*\\d", {"(", "a", "|", "b", ")*", "\\d"}},
        ItemsRow{"(?<n>a)(?=b)", {"(?<n>", "a", ")", "(?=", "b", ")"}},
        ItemsRow{"(?i)a", {"(?i)", "a"}},
        // Copies in expanded groups are skipped.
        ItemsRow{"(ab){3}c", {"(", "a", "b", "){3}", "c"}},
        ItemsRow{"((a){2}b){2}", {"(", "(", "a", "){2}", "b", "){2}"}}));

INSTANTIATE_TEST_SUITE_P(NotOnlyItems, Items,
                         testing::Values(ItemsRow{"", {}},
                                         ItemsRow{"(*UTF)a", {}},
                                         ItemsRow{"\\Qab\\E", {}},
                                         ItemsRow{"(?#c)a", {}}));

}  // namespace
