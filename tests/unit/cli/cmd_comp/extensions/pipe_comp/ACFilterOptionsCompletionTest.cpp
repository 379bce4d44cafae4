// The candidates of the filter's option node, directly and through the tree.

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "ACFilterOptions.h"
#include "Candidates.h"
#include "FilterCommand.h"
#include "PipeCmdTree.h"
#include "PipeOutput1.h"
#include "RecordingContext.h"
#include "Refusal.h"

namespace QorCliPipe {
namespace {

using QorCliUtilities::AutoCompleteResult;
using QorCliUtilities::Validation_Type;
using QorUnit::expectError;
using QorUnit::Refusal;
using Tokens = std::vector<std::string>;

constexpr char kAll1[] =
    "--after:1 --before:1 --ignore:1 --invert:1 -A:1 -B:1 -i:1 -v:1 "
    "<pattern>:1";
constexpr char kAll2[] =
    "--after:2 --before:2 --ignore:2 --invert:2 -A:2 -B:2 -i:2 -v:2 "
    "<pattern>:2";
constexpr char kNoSuchOption[] = "none";
constexpr char kWordOfNoOption[] = "<pattern>:1 <cr>:1";

// The candidates of each kind of request. "none" means -1.
struct Row {
  char const* line;
  std::string complete;
  std::string help;
  std::string completeBehindBlank;
  std::string helpBehindBlank;
};

// For a row whose four answers are the same.
Row always(char const* line, std::string const& offers) {
  return {line, offers, offers, offers, offers};
}

// For a word that can only be the pattern.
Row pattern(char const* line) {
  return {line, kWordOfNoOption, "<pattern>:1", "<cr>:1", "<pattern>:1"};
}

Tokens words(std::string const& line) {
  std::istringstream stream(line);
  Tokens list;
  for (std::string word; stream >> word;) list.push_back(word);
  return list;
}

// The other fields of each candidate, by its text: "[<rank> <key>] <help>".
std::map<std::string, std::string> const& descriptions() {
  static char const* const ignore =
      "Ignore case distinctions in both the pattern and the input";
  static char const* const invert =
      "Invert the sense of matching, to select non-matching lines";
  static char const* const after =
      "Print number of lines of trailing context after matching lines";
  static char const* const before =
      "Print number of lines of leading context before matching lines";
  static std::map<std::string, std::string> const table{
      {"--after", std::string("[1 --after] ") + after},
      {"--before", std::string("[1 --before] ") + before},
      {"--ignore", std::string("[1 --ignore] ") + ignore},
      {"--invert", std::string("[1 --invert] ") + invert},
      {"-A", std::string("[1 -a] ") + after},
      {"-B", std::string("[1 -b] ") + before},
      {"-i", std::string("[1 -i] ") + ignore},
      {"-v", std::string("[1 -v] ") + invert},
      {"<value>",
       "[7 <value>] The value for number lines to be printed after leading / "
       "trailing context"},
      {"<pattern>", "[7 <pattern>] The text used for pattern matching"},
      {"<space>", "[7 <space>] Enter space"},
      {"<cr>", "[7 <pattern>] Enter"},
  };
  return table;
}

void expectDescriptions(std::vector<AutoCompleteResult> const& results) {
  for (AutoCompleteResult const& result : results) {
    EXPECT_EQ(QorUnit::describe(result),
              std::to_string(result.token) + ' ' + result.completion + ' ' +
                  descriptions().at(result.completion));
  }
}

class OptionCompletion : public ::testing::Test {
 protected:
  // Asks the node at the position after the words, as the tree does.
  std::string offered(Tokens const& tokens, bool help, bool endsWithSpace) {
    std::vector<AutoCompleteResult> results;
    auto position = static_cast<unsigned>(tokens.size());
    int const status =
        node.autoComplete(session.context, tokens, "ignored", position,
                          endsWithSpace, help, results, output);
    expectDescriptions(results);
    EXPECT_TRUE(output.getOutput().empty());
    EXPECT_EQ(position, tokens.size() + (status == 0 ? 1 : 0));
    if (status == 0) return QorUnit::textsAndTokens(results);
    EXPECT_EQ(status, -1);
    EXPECT_TRUE(results.empty());
    return kNoSuchOption;
  }

  void expectRow(Row const& row) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(offered(words(row.line), false, false), row.complete);
    EXPECT_EQ(offered(words(row.line), true, false), row.help);
    EXPECT_EQ(offered(words(row.line), false, true), row.completeBehindBlank);
    EXPECT_EQ(offered(words(row.line), true, true), row.helpBehindBlank);
  }

  QorUnit::RecordingContext session;
  PipeOutput1 output;
  ACFilterOptions node{{QOR_CLI_MODE_ANY}, Validation_Type{0}, true};
};

TEST_F(OptionCompletion, AfterTheKeywordAlone) {
  expectRow({"filter", kAll2, "", kAll1, kAll1});
}

TEST_F(OptionCompletion, AtAnOptionThatTakesAValue) {
  expectRow(
      {"filter --after", "<value>:2", "--after:1", "<value>:1", "<value>:1"});
  expectRow({"filter -A", "<value>:2", "-A:1", "<value>:1", "<value>:1"});
  expectRow({"filter -a", "<value>:2", "-A:1", "<value>:1", "<value>:1"});
  expectRow(
      {"filter --BEFORE", "<value>:2", "--before:1", "<value>:1", "<value>:1"});
  expectRow({"filter -b", "<value>:2", "-B:1", "<value>:1", "<value>:1"});
  expectRow({"filter -i -v -A", "<value>:2", "-A:1", "<value>:1", "<value>:1"});
}

TEST_F(OptionCompletion, AtTheNumberOfAnOption) {
  std::string const withoutAfter =
      "--before:1 --ignore:1 --invert:1 -B:1 -i:1 -v:1 <pattern>:1";
  expectRow({"filter --after 5", "<space>:1", "<value>:1", withoutAfter,
             withoutAfter});
  expectRow(
      {"filter -A 007", "<space>:1", "<value>:1", withoutAfter, withoutAfter});
  std::string const withoutBeforeAndIgnore =
      "--after:1 --invert:1 -A:1 -v:1 <pattern>:1";
  expectRow({"filter --ignore -b 5", "<space>:1", "<value>:1",
             withoutBeforeAndIgnore, withoutBeforeAndIgnore});
}

TEST_F(OptionCompletion, AtAnInvalidNumber) {
  for (char const* line : {"filter --after x", "filter -A x", "filter -a 5x",
                           "filter -i --after -1", "filter --after --xyz",
                           "filter -a - ", "filter -a -- "}) {
    std::string const option =
        std::string(line).find("--after") != std::string::npos ? "--after"
                                                               : "-A";
    expectRow({line, "<value>:1 <space>:1", option + ":1 <value>:1",
               "<value>:1 <space>:1", option + ":1 <value>:1"});
  }
  expectRow({"filter --before x", "<value>:1 <space>:1", "--before:1 <value>:1",
             "<value>:1 <space>:1", "--before:1 <value>:1"});
}

TEST_F(OptionCompletion, AtAnOptionThatTakesNoValue) {
  struct {
    char const* line;
    char const* name;
    char const* left;
  } const rows[] = {
      {"filter -i", "-i", "--after # --before # --invert # -A # -B # -v #"},
      {"filter --IGNORE", "--ignore",
       "--after # --before # --invert # -A # -B # -v #"},
      {"filter -V", "-v", "--after # --before # --ignore # -A # -B # -i #"},
      {"filter --invert", "--invert",
       "--after # --before # --ignore # -A # -B # -i #"},
      {"filter -i --invert", "--invert", "--after # --before # -A # -B #"},
      {"filter -A 1 -b 2 -i -v", "-v", ""},
      // An option in place of another one's number.
      {"filter --after -i", "-i", "--before # --invert # -B # -v #"},
  };
  for (auto const& row : rows) {
    auto const left = [&](char token) {
      std::string list;
      for (std::string const& word : words(row.left)) {
        list += word == "#" ? std::string(":") + token + ' ' : word;
      }
      return list + "<pattern>:" + token;
    };
    expectRow({row.line, left('2'), std::string(row.name) + ":1", left('1'),
               left('1')});
  }
}

TEST_F(OptionCompletion, AtAPrefixOfAnOption) {
  expectRow(always("filter -",
                   "--after:1 --before:1 --ignore:1 --invert:1 -A:1 -B:1 -i:1 "
                   "-v:1"));
  expectRow(
      always("filter -i -", "--after:1 --before:1 --invert:1 -A:1 -B:1 -v:1"));
  expectRow(always("filter --", "--after:1 --before:1 --ignore:1 --invert:1"));
  expectRow(always("filter --invert --", "--after:1 --before:1 --ignore:1"));
  expectRow(always("filter -a 1 -b 2 -i -v -", ""));
  expectRow(always("filter -a 1 -b 2 -i -v --", ""));
  expectRow(always("filter --af", "--after:3"));
  expectRow(always("filter --AF", "--after:3"));
  expectRow(always("filter --i", "--ignore:1 --invert:1"));
  expectRow(always("filter -i --i", "--invert:3"));
  expectRow(always("filter --ignor", "--ignore:3"));
}

TEST_F(OptionCompletion, AtAnUnknownOrUsedOption) {
  expectRow(always("filter --xyz", kNoSuchOption));
  expectRow(always("filter -x", kNoSuchOption));
  expectRow(always("filter --ignores", kNoSuchOption));
  expectRow(always("filter ---", kNoSuchOption));
  expectRow(always("filter -i --ig", kNoSuchOption));
  expectRow(always("filter -a 1 -b 2 -i -v --a", kNoSuchOption));
  expectRow(always("filter --xyz 5", kNoSuchOption));
}

TEST_F(OptionCompletion, AtThePattern) {
  expectRow(pattern("filter abc"));
  expectRow(pattern("filter after"));
  expectRow(pattern("filter -i abc"));
  expectRow(pattern("filter -A 5 abc"));
  expectRow(pattern("filter abc def"));
  expectRow(pattern("filter -a 1 -b 2 -i -v abc"));
  expectRow(pattern("filter a-"));
}

// The role of a number depends on the word before it.
TEST_F(OptionCompletion, AtANumberAfterNoOption) {
  expectRow(pattern("filter 5"));
  expectRow(pattern("filter abc 5"));
  expectRow(pattern("filter -A 5 6"));
  expectRow({"filter -i 5",
             "--after:2 --before:2 --invert:2 -A:2 -B:2 -v:2 <pattern>:2",
             "-i:1",
             "--after:1 --before:1 --invert:1 -A:1 -B:1 -v:1 <pattern>:1",
             "--after:1 --before:1 --invert:1 -A:1 -B:1 -v:1 <pattern>:1"});
  expectRow(always("filter --af 5", "--after:3"));
}

TEST_F(OptionCompletion, AnEmptyWordIsANumber) {
  EXPECT_EQ(offered({"filter", ""}, false, false), kWordOfNoOption);
  EXPECT_EQ(offered({"filter", "-A", ""}, false, false), "<space>:1");
}

// The keyword is not an option, even if it is spelled like one.
TEST_F(OptionCompletion, UsedOptionsStartAfterTheKeyword) {
  EXPECT_EQ(offered({"-i", "-"}, false, false),
            "--after:1 --before:1 --ignore:1 --invert:1 -A:1 -B:1 -i:1 -v:1");
  EXPECT_EQ(offered({"-i"}, false, true), kAll1);
}

TEST_F(OptionCompletion, RequestsAreIndependent) {
  offered({"filter", "-i", "-v", "-"}, false, false);
  EXPECT_EQ(offered({"filter"}, false, true), kAll1);
}

TEST_F(OptionCompletion, RejectsInvalidInput) {
  ACFilterOptions bound({7}, Validation_Type{0}, true);
  Refusal const rows[] = {
      {{"filter"}, 2, 7, "Autocomplete action Past end of token list"},
      {{"filter"}, 2, 2, "Autocomplete action Past end of token list"},
      {{}, 1, 7, "Autocomplete action Past end of token list"},
      {{"filter"}, 1, 2, "Autocomplete action not valid for mode"},
      {{"filter"}, 0, 2, "Autocomplete action not valid for mode"},
  };
  for (auto const& row : rows) {
    session.record.mode = QorCliModeEnum_1T{row.mode};
    unsigned position = row.position;
    std::vector<AutoCompleteResult> results;
    expectError(row.text, [&] {
      bound.autoComplete(session.context, row.tokens, "", position, true, false,
                         results, output);
    });
    EXPECT_EQ(position, row.position);
    EXPECT_TRUE(results.empty());
  }
}

TEST_F(OptionCompletion, AcceptsAnyPositionUpToTheEnd) {
  session.record.mode = QorCliModeEnum_1T{7};
  for (unsigned position : {0U, 1U}) {
    unsigned moved = position;
    std::vector<AutoCompleteResult> results;
    EXPECT_EQ(node.autoComplete(session.context, {"filter"}, "", moved, true,
                                false, results, output),
              0);
    EXPECT_EQ(moved, position + 1);
    EXPECT_EQ(QorUnit::textsAndTokens(results), kAll1);
  }
}

// The same requests as lines, through the command's tree. After the second
// word, the tree no longer asks the node: the line may end there.
TEST(FilterTree, CompletesAndHelpsLines) {
  FilterCommand::instance();
  struct {
    char const* line;
    std::string completed;
    std::string helped;
  } const rows[] = {
      {"", "filter:5", "filter:5"},
      {"f", "filter:3", "filter:3"},
      {"FIL", "filter:3", "filter:3"},
      {"f ", "", ""},
      {"x", "", ""},
      {"filter", kAll2, "filter:3"},
      {"FILTER", kAll2, "filter:3"},
      {"filter ", kAll1, kAll1},
      {"filter -",
       "--after:1 --before:1 --ignore:1 --invert:1 -A:1 -B:1 -i:1 -v:1",
       "--after:1 --before:1 --ignore:1 --invert:1 -A:1 -B:1 -i:1 -v:1"},
      {"filter --", "--after:1 --before:1 --ignore:1 --invert:1",
       "--after:1 --before:1 --ignore:1 --invert:1"},
      {"filter --af", "--after:3", "--after:3"},
      {"filter --after", "<value>:2", "--after:1"},
      {"filter --after ", "<value>:1", "<value>:1"},
      {"filter --invert ",
       "--after:1 --before:1 --ignore:1 -A:1 -B:1 -i:1 <pattern>:1",
       "--after:1 --before:1 --ignore:1 -A:1 -B:1 -i:1 <pattern>:1"},
      {"filter --xyz", "", ""},
      {"filter abc", kWordOfNoOption, "<pattern>:1"},
      {"filter abc ", "<cr>:1", "<pattern>:1"},
      {"filter \"a b\"", kWordOfNoOption, "<pattern>:1"},
      {"filter 5", kWordOfNoOption, "<pattern>:1"},
      {"filter -i -", "<cr>:2", "<cr>:2"},
      {"filter --invert --", "<cr>:2", "<cr>:2"},
      {"filter --after 5", "<cr>:2", "<cr>:2"},
      {"filter --after 5 ", "<cr>:2", "<cr>:2"},
      {"filter --after x", "<cr>:2", "<cr>:2"},
      {"filter -i abc", "<cr>:2", "<cr>:2"},
  };
  QorUnit::RecordingContext session;
  PipeOutput1 output;
  for (auto const& row : rows) {
    for (QorCliModeEnum_1T mode : {QOR_CLI_MODE_EXEC, QorCliModeEnum_1T{2}}) {
      SCOPED_TRACE(row.line);
      session.record.mode = mode;
      std::vector<AutoCompleteResult> completed;
      std::vector<AutoCompleteResult> helped;
      PipeCmdTree& tree = PipeCmdTree::instance();
      EXPECT_EQ(tree.autoCompleteCommand(session.context, row.line, "",
                                         completed, output),
                0);
      EXPECT_EQ(tree.helpRequest(session.context, row.line, helped, output), 0);
      EXPECT_EQ(QorUnit::textsAndTokens(completed), row.completed);
      EXPECT_EQ(QorUnit::textsAndTokens(helped), row.helped);
    }
  }
}

}  // namespace
}  // namespace QorCliPipe
