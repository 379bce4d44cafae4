#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "PluginTest.h"

namespace qor_test {
namespace {

using testing::IsEmpty;

constexpr unsigned kActionId = 23;

// A candidate without its index.
struct Candidate {
  std::string completion;
  std::string help;
  unsigned token;
  unsigned sortOrder;
  std::string sortKey;
};

using Candidates = std::vector<Candidate>;

std::string lowerCased(std::string text) {
  for (char& c : text) {
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return text;
}

Candidate option(std::string const& name, unsigned token) {
  static std::map<std::string, std::string> const helpByLetter = {
      {"i", "Ignore case distinctions in both the pattern and the input"},
      {"v", "Invert the sense of matching, to select non-matching lines"},
      {"a", "Print number of lines of trailing context after matching lines"},
      {"b", "Print number of lines of leading context before matching lines"},
      {"ignore", "Ignore case distinctions in both the pattern and the input"},
      {"invert", "Invert the sense of matching, to select non-matching lines"},
      {"after",
       "Print number of lines of trailing context after matching lines"},
      {"before",
       "Print number of lines of leading context before matching lines"},
  };
  std::string const key = lowerCased(name);
  return {name, helpByLetter.at(key.substr(key.find_first_not_of('-'))), token,
          1, key};
}

Candidate pattern(unsigned token) {
  return {"<pattern>", "The text used for pattern matching", token, 7,
          "<pattern>"};
}

Candidate value(unsigned token) {
  return {"<value>",
          "The value for number lines to be printed after leading / trailing "
          "context",
          token, 7, "<value>"};
}

// The end of the line as the filter's options offer it, sorted like the
// pattern.
Candidate enter() { return {"<cr>", "Enter", 1, 7, "<pattern>"}; }

// The end of the line as the tree offers it.
Candidate carriageReturn() { return {"<cr>", "", 2, 7, "<cr>"}; }

Candidate keyword(unsigned token) {
  return {"filter", "() Print lines matching a pattern\nType: Command", token,
          6, "filter"};
}

Candidates options(std::vector<std::string> const& names, unsigned token) {
  Candidates all;
  for (std::string const& name : names) all.push_back(option(name, token));
  return all;
}

Candidates optionsAndPattern(std::vector<std::string> const& names,
                             unsigned token) {
  Candidates all = options(names, token);
  all.push_back(pattern(token));
  return all;
}

std::vector<std::string> const kAll = {
    "--after", "--before", "--ignore", "--invert", "-A", "-B", "-i", "-v"};
std::vector<std::string> const kWithoutIgnore = {
    "--after", "--before", "--invert", "-A", "-B", "-v"};
std::vector<std::string> const kWithoutInvert = {
    "--after", "--before", "--ignore", "-A", "-B", "-i"};

struct CompletionRow {
  char const* name;
  char const* line;
  Candidates completions;
  Candidates helps;
};

// By default, GoogleTest prints a row's bytes, which vary from run to run.
std::ostream& operator<<(std::ostream& out, CompletionRow const& row) {
  return out << row.name;
}

class Completion : public PluginTest,
                   public testing::WithParamInterface<CompletionRow> {
 protected:
  void expectAnswer(unsigned action, Candidates const& expected);
};

void Completion::expectAnswer(unsigned action, Candidates const& expected) {
  session.clear();
  ActionResult const result =
      use(action, kActionId, GetParam().line, "filter\n");
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(0U, result.commandMatchCount);
  std::vector<CandidateCall> calls;
  for (Candidate const& candidate : expected) {
    calls.push_back({static_cast<unsigned>(calls.size()),
                     static_cast<unsigned>(expected.size()), kActionId,
                     candidate.token, candidate.completion, candidate.help,
                     candidate.sortOrder, candidate.sortKey});
  }
  EXPECT_EQ(calls, session.candidates);
  EXPECT_THAT(session.outputs, IsEmpty());
  EXPECT_THAT(session.otherCalls, IsEmpty());
}

TEST_P(Completion, OffersCompletions) {
  expectAnswer(kComplete, GetParam().completions);
}

TEST_P(Completion, OffersHelp) { expectAnswer(kHelp, GetParam().helps); }

std::vector<CompletionRow> keywordRows() {
  return {
      {"NothingTyped", "", {keyword(5)}, {keyword(5)}},
      {"OnlyBlanks", "  ", {keyword(5)}, {keyword(5)}},
      {"PartOfTheKeyword", "fil", {keyword(3)}, {keyword(3)}},
      {"PartOfTheKeywordUpper", "FIL", {keyword(3)}, {keyword(3)}},
      {"FinishedPartOfTheKeyword", "fil ", {}, {}},
      {"AnotherWord", "show", {}, {}},
      {"LongerThanTheKeyword", "filters", {}, {}},
      {"AnotherWordFirst", "show filter", {}, {}},
      {"PartOfTheKeywordFirst", "fil -", {}, {}},
      {"Keyword", "filter", optionsAndPattern(kAll, 2), {keyword(3)}},
      {"KeywordUpper", "FILTER", optionsAndPattern(kAll, 2), {keyword(3)}},
      {"KeywordAndBlank", "filter ", optionsAndPattern(kAll, 1),
       optionsAndPattern(kAll, 1)},
      {"KeywordAndBlanks", " filter  ", optionsAndPattern(kAll, 1),
       optionsAndPattern(kAll, 1)},
      {"KeywordAndTab", "filter\t", optionsAndPattern(kAll, 2), {keyword(3)}},
  };
}

std::vector<CompletionRow> optionRows() {
  return {
      {"Dash", "filter -", options(kAll, 1), options(kAll, 1)},
      {"TwoDashes", "filter --",
       options({"--after", "--before", "--ignore", "--invert"}, 1),
       options({"--after", "--before", "--ignore", "--invert"}, 1)},
      {"OneFits",
       "filter --af",
       {option("--after", 3)},
       {option("--after", 3)}},
      {"OneFitsUpper",
       "filter --AF",
       {option("--after", 3)},
       {option("--after", 3)}},
      {"OneFitsAndBlank",
       "filter --af ",
       {option("--after", 3)},
       {option("--after", 3)}},
      {"TwoFit", "filter --i", options({"--ignore", "--invert"}, 1),
       options({"--ignore", "--invert"}, 1)},
      {"NoneFits", "filter --xyz", {}, {}},
      {"NoneFitsShort", "filter -x ", {}, {}},
      {"LongerThanAnOption", "filter --afters", {}, {}},
      {"Flag",
       "filter -i",
       optionsAndPattern(kWithoutIgnore, 2),
       {option("-i", 1)}},
      {"FlagUpper",
       "filter -I",
       optionsAndPattern(kWithoutIgnore, 2),
       {option("-i", 1)}},
      {"FlagLong",
       "filter --invert",
       optionsAndPattern(kWithoutInvert, 2),
       {option("--invert", 1)}},
      {"FlagAndBlank", "filter --Invert ", optionsAndPattern(kWithoutInvert, 1),
       optionsAndPattern(kWithoutInvert, 1)},
      {"FlagShortAndBlank", "filter -i ", optionsAndPattern(kWithoutIgnore, 1),
       optionsAndPattern(kWithoutIgnore, 1)},
      {"CountWanted", "filter --after", {value(2)}, {option("--after", 1)}},
      {"CountWantedShort", "filter -a", {value(2)}, {option("-A", 1)}},
      {"CountWantedShortUpper", "filter -B", {value(2)}, {option("-B", 1)}},
      {"CountWantedAndBlank", "filter --after ", {value(1)}, {value(1)}},
      {"CountWantedShortAndBlank", "filter -b ", {value(1)}, {value(1)}},
  };
}

std::vector<CompletionRow> patternRows() {
  return {
      {"Pattern", "filter abc", {pattern(1), enter()}, {pattern(1)}},
      {"PatternAndBlank", "filter abc ", {enter()}, {pattern(1)}},
      {"QuotedPattern", "filter \"a b\"", {pattern(1), enter()}, {pattern(1)}},
      {"OpenQuote", "filter \"a b ", {enter()}, {pattern(1)}},
      {"Number", "filter 5", {pattern(1), enter()}, {pattern(1)}},
      {"NumberAndBlank", "filter 5 ", {enter()}, {pattern(1)}},
      {"KeywordAsPattern",
       "filter filter",
       {pattern(1), enter()},
       {pattern(1)}},
      // After the second word any line may end.
      {"ThreeWords", "filter -i -", {carriageReturn()}, {carriageReturn()}},
      {"ThreeWordsAndBlank",
       "filter -i abc ",
       {carriageReturn()},
       {carriageReturn()}},
      {"ThreeWordsWithCount",
       "filter --after 5",
       {carriageReturn()},
       {carriageReturn()}},
      {"ThreeWordsUnknownOption",
       "filter -i --xyz",
       {carriageReturn()},
       {carriageReturn()}},
      {"ManyWords",
       "filter -a 1 -b 2 -i -v abc",
       {carriageReturn()},
       {carriageReturn()}},
  };
}

std::string nameOfRow(testing::TestParamInfo<CompletionRow> const& test) {
  return test.param.name;
}

INSTANTIATE_TEST_SUITE_P(Keyword, Completion, testing::ValuesIn(keywordRows()),
                         nameOfRow);
INSTANTIATE_TEST_SUITE_P(Option, Completion, testing::ValuesIn(optionRows()),
                         nameOfRow);
INSTANTIATE_TEST_SUITE_P(Pattern, Completion, testing::ValuesIn(patternRows()),
                         nameOfRow);

class CompletionSession : public PluginTest {
 protected:
  std::vector<CandidateCall> answer(unsigned action, std::string const& line) {
    session.clear();
    EXPECT_EQ(0, use(action, kActionId, line).status);
    return session.candidates;
  }
};

TEST_F(CompletionSession, AnInvalidLineFails) {
  for (unsigned const action : {kComplete, kHelp}) {
    for (char const* line : {"filter a\"b\"", "filter \"b\"a", "f\"i\" "}) {
      EXPECT_EQ(-1, use(action, kActionId, line).status) << line;
      EXPECT_THAT(session.candidates, IsEmpty());
    }
  }
}

TEST_F(CompletionSession, IgnoresTheModeAndTheCursor) {
  std::vector<std::string> const lines = {"", "fil", "filter ", "filter -i"};
  for (unsigned const action : {kComplete, kHelp}) {
    for (std::string const& line : lines) {
      session.record.mode = 1;
      session.record.cursor = nullptr;
      std::vector<CandidateCall> const expected = answer(action, line);
      EXPECT_THAT(expected, testing::Not(IsEmpty())) << line;
      session.record.mode = 4294967295U;
      session.record.cursor = "somewhere";
      EXPECT_EQ(expected, answer(action, line)) << line;
    }
  }
}

TEST_F(CompletionSession, NothingIsOfferedAfterTermination) {
  plugin.terminate();
  for (unsigned const action : {kComplete, kHelp}) {
    EXPECT_THAT(answer(action, ""), IsEmpty());
    EXPECT_THAT(answer(action, "filter "), IsEmpty());
  }
}

TEST_F(CompletionSession, ARequestKeepsNoState) {
  std::vector<CandidateCall> const first = answer(kComplete, "filter -i");
  answer(kComplete, "filter --after");
  answer(kHelp, "filter --before 5 ");
  EXPECT_EQ(first, answer(kComplete, "filter -i"));
}

}  // namespace
}  // namespace qor_test
