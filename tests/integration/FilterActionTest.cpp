#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "Chunks.h"
#include "PluginTest.h"
#include "Seed.h"

namespace qor_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

constexpr char kSeparator[] = "   --\n";
constexpr unsigned kActionId = 17;

// Checks that `calls` answer `actionId`, with indexes from 0 and the same
// count.
void expectNumbered(std::vector<OutputCall> const& calls, unsigned actionId) {
  for (unsigned i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(i, calls[i].index);
    EXPECT_EQ(calls.size(), calls[i].count);
    EXPECT_EQ(actionId, calls[i].actionId);
  }
}

// Names a test after its row and its chunking, if any.
struct NameOfRow {
  template <class Row>
  std::string operator()(testing::TestParamInfo<Row> const& test) const {
    return test.param.name;
  }

  template <class Row>
  std::string operator()(
      testing::TestParamInfo<std::tuple<Row, Chunking>> const& test) const {
    auto const& [row, chunking] = test.param;
    return std::string(row.name) + nameOf(chunking);
  }
};

struct FilterRow {
  char const* name;
  char const* line;
  char const* input;
  Texts kept;
};

// By default, GoogleTest prints a row's bytes, which vary from run to run.
std::ostream& operator<<(std::ostream& out, FilterRow const& row) {
  return out << row.name;
}

class Filter
    : public PluginTest,
      public testing::WithParamInterface<std::tuple<FilterRow, Chunking>> {};

TEST_P(Filter, PrintsTheKeptLines) {
  auto const& [row, chunking] = GetParam();
  std::mt19937 random(testSeed());
  Texts kept;
  for (std::string const& chunk : chunksOf(row.input, chunking, random)) {
    session.clear();
    ActionResult const result = use(kExecute, kActionId, row.line, chunk);
    EXPECT_EQ(0, result.status);
    EXPECT_EQ(1U, result.commandMatchCount);
    expectNumbered(session.outputs, kActionId);
    EXPECT_THAT(session.candidates, IsEmpty());
    EXPECT_THAT(session.otherCalls, IsEmpty());
    for (std::string& text : textsOf(session.outputs)) {
      kept.push_back(std::move(text));
    }
  }
  EXPECT_EQ(row.kept, kept);
}

FilterRow const kFilterRows[] = {
    {"PlainPattern", "filter b", "abc\nxyz\nb\n", {"abc\n", "b\n"}},
    {"NoLineMatches", "filter q", "abc\nxyz\n", {}},
    {"NoInput", "filter a", "", {}},
    {"NoSeparatorWithoutContext", "filter M", "M\nx\ny\nM\n", {"M\n", "M\n"}},
    {"KeywordInAnyCase", "FiLTeR b", "abc\nxyz\n", {"abc\n"}},
    {"BlanksAroundTheLine", "  filter   b  ", "abc\nxyz\n", {"abc\n"}},
    {"IgnoreCaseShort", "filter -i aB", "ab\nAB\ncd\n", {"ab\n", "AB\n"}},
    {"IgnoreCaseShortUpper", "filter -I aB", "ab\ncd\n", {"ab\n"}},
    {"IgnoreCaseLong", "filter --ignore aB", "ab\ncd\n", {"ab\n"}},
    {"IgnoreCaseLongUpper", "filter --IGNORE aB", "ab\ncd\n", {"ab\n"}},
    {"CaseCountsOtherwise", "filter aB", "ab\nAB\naB\n", {"aB\n"}},
    {"InvertShort", "filter -v a", "a\nb\nab\nc\n", {"b\n", "c\n"}},
    {"InvertShortUpper", "filter -V a", "a\nb\n", {"b\n"}},
    {"InvertLong", "filter --invert a", "a\nb\n", {"b\n"}},
    {"InvertLongUpper", "filter --Invert a", "a\nb\n", {"b\n"}},
    {"InvertAndIgnoreCase",
     "filter -v -i abc",
     "xABCx\nab\nabc\nc\n",
     {"ab\n", "c\n"}},
    {"FlagsMayBeRepeated", "filter -i -i --ignore -v -v A", "a\nb\n", {"b\n"}},
    {"OptionsMayFollowThePattern", "filter A -i", "a\nb\n", {"a\n"}},
    {"AfterZeroIsNoAfter", "filter -a 0 M", "M\nx\ny\nM\n", {"M\n", "M\n"}},
    {"BeforeZeroIsNoBefore", "filter -b 0 M", "M\nx\ny\nM\n", {"M\n", "M\n"}},
    {"AfterShort",
     "filter -a 1 M",
     "M\nx\ny\nM\n",
     {"M\n", "x\n", kSeparator, "M\n"}},
    {"AfterShortUpper", "filter -A 2 M", "M\nx\ny\nz\n", {"M\n", "x\n", "y\n"}},
    {"AfterLong", "filter --after 1 M", "M\nx\ny\n", {"M\n", "x\n"}},
    {"AfterLongUpper", "filter --AFTER 1 M", "M\nx\ny\n", {"M\n", "x\n"}},
    {"AfterGroupsThatTouchAreOne",
     "filter -a 1 M",
     "M\nx\nM\nM\ny\nz\n",
     {"M\n", "x\n", "M\n", "M\n", "y\n"}},
    {"AfterStartsAgainAtEachMatch",
     "filter -a 2 M",
     "M\nx\nM\ny\nz\nw\n",
     {"M\n", "x\n", "M\n", "y\n", "z\n"}},
    {"AfterHasNoLeadingSeparator", "filter -a 1 M", "x\ny\nM\n", {"M\n"}},
    {"BeforeShort",
     "filter -b 2 M",
     "a\nb\nc\nM\nd\ne\nf\nM\n",
     {"b\n", "c\n", "M\n", kSeparator, "e\n", "f\n", "M\n"}},
    {"BeforeShortUpper", "filter -B 1 M", "x\ny\nM\nz\n", {"y\n", "M\n"}},
    {"BeforeLong", "filter --before 1 M", "x\ny\nM\n", {"y\n", "M\n"}},
    {"BeforeLongUpper", "filter --Before 1 M", "x\ny\nM\n", {"y\n", "M\n"}},
    {"BeforeGroupsThatTouchAreOne",
     "filter -b 2 M",
     "M\na\nb\nM\n",
     {"M\n", "a\n", "b\n", "M\n"}},
    {"BeforeSeparatorWithoutLeadingLines",
     "filter -b 1 M",
     "M\na\nb\nM\nM\n",
     {"M\n", kSeparator, "b\n", "M\n", "M\n"}},
    {"AfterAndBefore",
     "filter -a 1 -b 1 M",
     "p\nq\nM\na\nb\nc\nM\nd\ne\n",
     {"q\n", "M\n", "a\n", kSeparator, "c\n", "M\n", "d\n"}},
    {"AfterAndBeforeTouch",
     "filter -a 1 -b 1 M",
     "M\na\nb\nM\n",
     {"M\n", "a\n", "b\n", "M\n"}},
    {"ContextOfInvertedMatches",
     "filter -v -a 1 M",
     "x\nM\nM\nM\nx\n",
     {"x\n", "M\n", kSeparator, "x\n"}},
    {"CountIsDecimal",
     "filter -a 010 M",
     "M\n1\n2\n3\n4\n5\n6\n7\n8\n9\n0\nx\n",
     {"M\n", "1\n", "2\n", "3\n", "4\n", "5\n", "6\n", "7\n", "8\n", "9\n",
      "0\n"}},
    {"CountBehind32Bits",
     "filter -a 4294967296 M",
     "M\nx\ny\n",
     {"M\n", "x\n", "y\n"}},
    {"CountBehind64Bits",
     "filter -b 99999999999999999999 M",
     "x\ny\nM\nz\n",
     {"x\n", "y\n", "M\n"}},
    {"CountAtTheUpperBound",
     "filter -b 4294967295 M",
     "x\ny\nM\nz\n",
     {"x\n", "y\n", "M\n"}},
    {"LoneDashIsAPattern", "filter -", "a-b\nab\n", {"a-b\n"}},
    {"NumberIsAPattern", "filter 5", "15\n16\n", {"15\n"}},
    {"QuotedBlanks", "filter \"a b\"", "a b\na  b\n", {"a b\n"}},
    {"QuotedPunctuation", "filter \"a = b\"", "a = b\na=b\n", {"a = b\n"}},
    {"BlanksAtPunctuationGo", "filter a = b", "a = b\na=b\n", {"a=b\n"}},
    {"UnfinishedQuotes", "filter \"a b", "a b\na\n", {"a b\n"}},
    {"QuotesInsideAWord", "filter x=\"abc\"", "abc\nabc\"\n", {"abc\"\n"}},
    {"EmptyPatternKeepsNothing", "filter \"\"", "a\n\n", {}},
    {"EmptyPatternInverted", "filter -v \"\"", "a\n\nb", {"a\n", "\n"}},
    {"EmptyMatchIsNoMatch", "filter x*", "ax\nxa\na\n", {"xa\n"}},
    {"AnchorsAreThoseOfTheLine", "filter ^a$", "a\nab\nba\n", {"a\n"}},
    {"EmptyLineHasNoMatch", "filter -v ^$", "\na\n", {"\n", "a\n"}},
    {"PerlSyntax", "filter \\d{2,}(?!x)", "12\n12x\n1\n", {"12\n"}},
    {"CarriageReturnsBelongToLines", "filter a$", "a\r\na\n", {"a\n"}},
    {"BytesArePassedThrough",
     "filter \xc3\xa4",
     "\xc3\xa4\xff\n\xc3\n",
     {"\xc3\xa4\xff\n"}},
    {"LinesAreNoFormats", "filter %", "100%s%n\n", {"100%s%n\n"}},
    {"TextBehindTheLastLineFeed", "filter a", "a\nab", {"a\n"}},
    {"OnlyTextWithoutALineFeed", "filter a", "a", {}},
    {"MalformedPatternOverNothing", "filter (", "", {}},
    {"MalformedPatternOverNoLine", "filter (", "a", {}},
};

INSTANTIATE_TEST_SUITE_P(Rows, Filter,
                         testing::Combine(testing::ValuesIn(kFilterRows),
                                          testing::Values(Chunking::kWhole,
                                                          Chunking::kLineByLine,
                                                          Chunking::kRandom)),
                         NameOfRow());

struct ErrorRow {
  char const* name;
  std::string line;
  std::string error;
};

std::ostream& operator<<(std::ostream& out, ErrorRow const& row) {
  return out << row.name;
}

constexpr char kNotFound[] = "ERROR: Command not found\n";

std::string rangeError(std::string const& value, std::string const& option) {
  return "ERROR: Invalid value '" + value + "' for integer parameter '" +
         option + "'. Valid values are in range : [0,4294967295]\n";
}

class FilterError
    : public PluginTest,
      public testing::WithParamInterface<std::tuple<ErrorRow, Chunking>> {};

TEST_P(FilterError, IsTheOnlyOutputOfEveryCall) {
  auto const& [row, chunking] = GetParam();
  std::mt19937 random(testSeed());
  for (std::string const& chunk : chunksOf("a\nb\na\n", chunking, random)) {
    session.clear();
    ActionResult const result = use(kExecute, kActionId, row.line, chunk);
    EXPECT_EQ(-1, result.status);
    EXPECT_EQ(1U, result.commandMatchCount);
    EXPECT_THAT(session.outputs,
                ElementsAre(OutputCall{0, 1, kActionId, row.error}));
    EXPECT_THAT(session.otherCalls, IsEmpty());
  }
}

std::vector<ErrorRow> errorRows() {
  std::string const longValue(3000, 'x');
  return {
      {"NoPattern", "filter -i", kNotFound},
      {"NoPatternBehindACount", "filter -a 1", kNotFound},
      {"NoCountBehindAfter", "filter a -a", kNotFound},
      {"NoCountBehindBefore", "filter a --before", kNotFound},
      {"SecondPattern", "filter a b", kNotFound},
      {"SecondEmptyPattern", "filter \"\" \"\"", kNotFound},
      {"UnknownOption", "filter -x", kNotFound},
      {"UnknownLongOption", "filter --bogus a", kNotFound},
      {"AbbreviatedOption", "filter --ig a", kNotFound},
      {"NegativeNumber", "filter -5", kNotFound},
      {"QuotedDash", "filter \"-\"", kNotFound},
      {"QuotedOption", "filter \"-i\"", kNotFound},
      {"NoNumberForAfter", "filter -a x abc", rangeError("x", "-a")},
      {"NoNumberForAfterUpper", "filter -A x abc", rangeError("x", "-A")},
      {"NoNumberForAfterLong", "filter --After x a",
       rangeError("x", "--After")},
      {"NoNumberForBefore", "filter -b x abc", rangeError("x", "-b")},
      {"NoNumberForBeforeLong", "filter --before x a",
       rangeError("x", "--before")},
      {"NegativeCount", "filter -a -1 a", rangeError("-1", "-a")},
      {"SignedCount", "filter -a +1 a", rangeError("+1", "-a")},
      {"HexadecimalCount", "filter -a 0x1 a", rangeError("0x1", "-a")},
      {"CountWithALetter", "filter -a 1a a", rangeError("1a", "-a")},
      {"QuotedCount", "filter -a \"1\" a", rangeError("\"1\"", "-a")},
      {"OptionForACount", "filter -a -i a", rangeError("-i", "-a")},
      {"ValueIsNoFormat", "filter -a %s%d a", rangeError("%s%d", "-a")},
      {"BadCountBeforeASecondPattern", "filter a -a x b",
       rangeError("x", "-a")},
      {"SecondPatternBeforeABadCount", "filter a b -a x", kNotFound},
      {"LongTextIsCut", "filter -a " + longValue + " a",
       rangeError(longValue, "-a").substr(0, 1999)},
  };
}

INSTANTIATE_TEST_SUITE_P(Rows, FilterError,
                         testing::Combine(testing::ValuesIn(errorRows()),
                                          testing::Values(Chunking::kWhole,
                                                          Chunking::kLineByLine,
                                                          Chunking::kRandom)),
                         NameOfRow());

class FilterFailure : public PluginTest {};

TEST_F(FilterFailure, AMalformedPatternPrintsNothing) {
  for (char const* line : {"filter (", "filter \"[a\"", "filter -v *"}) {
    ActionResult const result = use(kExecute, kActionId, line, "a\nb\n");
    EXPECT_EQ(-1, result.status) << line;
    EXPECT_EQ(1U, result.commandMatchCount) << line;
  }
  EXPECT_THAT(session.outputs, IsEmpty());
}

// The pattern's own match limit, so that the test takes less than a second.
TEST_F(FilterFailure, ALineThatExceedsTheMatchLimitEndsTheOutput) {
  std::string const tooFar = std::string(40, 'a') + "b\n";
  ActionResult const result =
      use(kExecute, kActionId, "filter (*LIMIT_MATCH=1000)^(a+)+$",
          "a\naa\n" + tooFar + "aaa\n");
  EXPECT_EQ(-1, result.status);
  EXPECT_THAT(session.outputs, ElementsAre(OutputCall{0, 2, kActionId, "a\n"}));
}

struct NothingRow {
  char const* name;
  char const* line;
  std::int32_t status;
};

std::ostream& operator<<(std::ostream& out, NothingRow const& row) {
  return out << row.name;
}

class NothingRuns : public PluginTest,
                    public testing::WithParamInterface<NothingRow> {};

TEST_P(NothingRuns, AndNothingIsPrinted) {
  ActionResult const result =
      use(kExecute, kActionId, GetParam().line, "a\nfilter\n");
  EXPECT_EQ(GetParam().status, result.status);
  EXPECT_EQ(0U, result.commandMatchCount);
  EXPECT_THAT(session.outputs, IsEmpty());
  EXPECT_THAT(session.otherCalls, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, NothingRuns,
    testing::Values(NothingRow{"EmptyLine", "", 0},
                    NothingRow{"BlankLine", " \t ", 0},
                    NothingRow{"KeywordAlone", "filter", 0},
                    NothingRow{"KeywordAndBlank", "filter ", 0},
                    NothingRow{"AbbreviatedKeyword", "filt a", 0},
                    NothingRow{"OtherWord", "filterx a", 0},
                    NothingRow{"BracketTakesTheBlank", "filter [a]", 0},
                    NothingRow{"KeywordInSecondPlace", "a filter", 0},
                    NothingRow{"QuotesGluedToAWord", "filter a\"b\"", -1},
                    NothingRow{"WordGluedToQuotes", "filter \"b\"a", -1}),
    NameOfRow());

// The filter's state between calls.
class FilterState : public PluginTest {
 protected:
  Texts filter(unsigned actionId, std::string const& line,
               std::string const& input) {
    session.clear();
    use(kExecute, actionId, line, input);
    return textsOf(session.outputs);
  }
};

TEST_F(FilterState, LeadingContextIsKeptForTheNextCall) {
  EXPECT_THAT(filter(1, "filter -b 1 M", "x\n"), IsEmpty());
  EXPECT_THAT(filter(1, "filter -b 1 M", "M\n"), ElementsAre("x\n", "M\n"));
}

TEST_F(FilterState, TrailingContextContinuesInTheNextCall) {
  EXPECT_THAT(filter(1, "filter -a 2 M", "M\nx\n"), ElementsAre("M\n", "x\n"));
  EXPECT_THAT(filter(1, "filter -a 2 M", "y\nz\n"), ElementsAre("y\n"));
}

TEST_F(FilterState, ASeparatorIsPendingInTheNextCall) {
  EXPECT_THAT(filter(1, "filter -a 1 M", "M\nx\ny\n"),
              ElementsAre("M\n", "x\n"));
  EXPECT_THAT(filter(1, "filter -a 1 M", "M\n"),
              ElementsAre(kSeparator, "M\n"));
}

TEST_F(FilterState, LeadingContextMayGrowFromCallToCall) {
  EXPECT_THAT(filter(1, "filter -b 2 M", "a\nb\nc\n"), IsEmpty());
  EXPECT_THAT(filter(1, "filter -b 3 M", "d\nM\n"),
              ElementsAre("b\n", "c\n", "d\n", "M\n"));
}

TEST_F(FilterState, EachActionHasItsOwn) {
  EXPECT_THAT(filter(1, "filter -b 1 M", "x\n"), IsEmpty());
  EXPECT_THAT(filter(2, "filter -b 1 M", "M\n"), ElementsAre("M\n"));
  EXPECT_THAT(filter(1, "filter -b 1 M", "M\n"), ElementsAre("x\n", "M\n"));
}

TEST_F(FilterState, AnotherSessionWithTheSameActionContinues) {
  Session other;
  EXPECT_THAT(filter(1, "filter -b 1 M", "x\n"), IsEmpty());
  unsigned matches = 0;
  EXPECT_EQ(0, interface->useModule(&other.record, kExecute, 1, &matches,
                                    "filter -b 1 M", "M\n"));
  EXPECT_THAT(textsOf(other.outputs), ElementsAre("x\n", "M\n"));
  EXPECT_THAT(session.outputs, IsEmpty());
}

TEST_F(FilterState, IsClearedWhenTheInputIsComplete) {
  filter(1, "filter -b 1 M", "x\n");
  EXPECT_EQ(0, interface->inputComplete(&session.record, 1));
  EXPECT_THAT(session.outputs, IsEmpty());
  EXPECT_THAT(session.otherCalls, IsEmpty());
  EXPECT_THAT(filter(1, "filter -b 1 M", "M\n"), ElementsAre("M\n"));
}

TEST_F(FilterState, IsClearedWhenAnyInputIsComplete) {
  filter(1, "filter -b 1 M", "x\n");
  filter(2, "filter -b 1 M", "x\n");
  EXPECT_EQ(0, interface->inputComplete(&session.record, 99));
  EXPECT_THAT(filter(1, "filter -b 1 M", "M\n"), ElementsAre("M\n"));
  EXPECT_THAT(filter(2, "filter -b 1 M", "M\n"), ElementsAre("M\n"));
}

TEST_F(FilterState, IsClearedWhenAnyFilterFails) {
  for (char const* failing :
       {"filter -i", "filter -a x a", "filter a b", "filter -x", "filter ("}) {
    filter(1, "filter -b 1 M", "x\n");
    filter(2, failing, "a\n");
    EXPECT_THAT(filter(1, "filter -b 1 M", "M\n"), ElementsAre("M\n"))
        << failing;
    interface->inputComplete(&session.record, 1);
  }
}

TEST_F(FilterState, SurvivesOtherActions) {
  filter(1, "filter -b 1 M", "x\n");
  use(kComplete, 1, "filter ");
  use(kHelp, 1, "filter ");
  use(1, 1, "filter -i", "a\n");
  filter(2, "filter (", "");
  filter(1, "nothing", "a\n");
  EXPECT_THAT(filter(1, "filter -b 1 M", "M\n"), ElementsAre("x\n", "M\n"));
}

TEST_F(FilterState, EndsWithTheLibrary) {
  filter(1, "filter -b 1 M", "x\n");
  plugin.terminate();
  ASSERT_TRUE(plugin.unload());
  Plugin again;
  ASSERT_EQ(0, again.init(&portal.accessor, nullptr));
  interface = portal.registered->providedInterfaces[0];
  EXPECT_THAT(filter(1, "filter -b 1 M", "M\n"), ElementsAre("M\n"));
  again.terminate();
  plugin.terminate = [] {};
}

}  // namespace
}  // namespace qor_test
