#include <gtest/gtest.h>

#include "ACKeyword.h"
#include "ACParameter.h"
#include "AutoCompleteTree.h"
#include "Candidates.h"
#include "LinesOutput.h"
#include "RecordingCommand.h"
#include "RecordingContext.h"
#include "Refusal.h"

namespace QorCliUtilities {
namespace {

using QorUnit::expectError;
using QorUnit::Refusal;

// port N
// name WORD up|down
class ParameterNode : public ::testing::Test {
 protected:
  ParameterNode() {
    tree.addPathToTree(keyword("port"),
                       std::make_unique<ACParameter>(
                           Parameter::number("<n>", "Its number", 1, 48), true),
                       end());
    tree.addPathToTree(
        keyword("name"),
        std::make_unique<ACParameter>(Parameter::text("<word>", "Any"), false),
        std::make_unique<ACParameter>(
            Parameter::choice("<way>", "The way", {"up", "upside", "down"}),
            true),
        end());
  }

  static std::unique_ptr<ACKeyword> keyword(char const* word) {
    return std::make_unique<ACKeyword>(KeywordSettings{word, "Help"});
  }
  std::unique_ptr<AutoCompleteNode> end() {
    return std::make_unique<AutoCompleteNode>(&command);
  }

  bool runs(char const* line) {
    unsigned matches = 0;
    tree.executeCommand(session.context, line, &matches, output);
    return matches != 0;
  }

  std::string completed(char const* line) {
    std::vector<AutoCompleteResult> results;
    tree.autoCompleteCommand(session.context, line, "", results, output);
    return QorUnit::textsAndTokens(results);
  }

  std::string helped(char const* line) {
    std::vector<AutoCompleteResult> results;
    tree.helpRequest(session.context, line, results, output);
    return QorUnit::textsAndTokens(results);
  }

  QorUnit::RecordingCommand command{"Show"};
  QorUnit::RecordingContext session;
  LinesOutput output;
  AutoCompleteTree tree;
};

TEST_F(ParameterNode, AcceptsWordsOfItsKind) {
  for (char const* line : {"port 1", "port 48", "port 007", "name a up",
                           "name \"a b\" DOWN", "name - upside"}) {
    EXPECT_TRUE(runs(line)) << line;
  }
  for (char const* line :
       {"port", "port 0", "port 49", "port x", "port -1", "port 1 2", "name",
        "name a", "name a u", "name a up x", "name -a up", "name \"-a\" up"}) {
    EXPECT_FALSE(runs(line)) << line;
  }
}

TEST_F(ParameterNode, IsOfferedAsItsKind) {
  struct {
    char const* line;
    char const* complete;
    char const* help;
  } const rows[] = {
      {"port", "<n>:5", "port:3 <n>:5"},
      {"port ", "<n>:1", "<n>:1"},
      {"port 4", "<n>:1 <cr>:2", "<n>:1"},
      {"port 4 ", "<cr>:2", ""},
      {"port 0", "<n>:1", "<n>:1"},
      {"port -", "<n>:1", "<n>:1"},
      {"port -1", "", ""},
      {"name", "<word>:5", "name:3 <word>:5"},
      {"name a", "up:5 upside:5 down:5", "<word>:1 up:5 upside:5 down:5"},
      {"name a ", "up:1 upside:1 down:1", "up:1 upside:1 down:1"},
      {"name a u", "up:1 upside:1", "up:1 upside:1"},
      {"name a D", "down:3", "down:3"},
      {"name a up", "upside:1 <cr>:2", "up:1 upside:1"},
      {"name a x", "", ""},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(completed(row.line), row.complete) << row.line;
    EXPECT_EQ(helped(row.line), row.help) << row.line;
  }
}

TEST_F(ParameterNode, IsANodeForItsPlaceholder) {
  ACParameter node(Parameter::text("<word>", "Any"), true, {7});
  EXPECT_EQ(node.keyword(), "<word>");
  EXPECT_TRUE(node.ignoreCase());
  EXPECT_TRUE(node.potentialTerminalNode());
  EXPECT_FALSE(node.isHidden());
  EXPECT_EQ(node.validationType(), VALIDATION_KEYWORD);
  EXPECT_TRUE(node.isValidForMode(QorCliModeEnum_1T{7}));
  EXPECT_FALSE(node.isValidForMode(QorCliModeEnum_1T{2}));
}

TEST_F(ParameterNode, RejectsInvalidInput) {
  ACParameter node(Parameter::text("<word>", "Any"), true, {7});
  Refusal const rows[] = {
      {{}, 0, 7, "isMatch parameter past end of token list"},
      {{"a"}, 1, 7, "isMatch parameter past end of token list"},
      {{"a"}, 0, 2, "isMatch parameter not valid for mode"},
  };
  for (auto const& row : rows) {
    session.record.mode = QorCliModeEnum_1T{row.mode};
    unsigned position = row.position;
    expectError(row.text, [&] {
      node.isMatch(session.context, row.tokens, position, output, true);
    });
    EXPECT_EQ(position, row.position);
  }
  session.record.mode = QorCliModeEnum_1T{2};
  std::vector<AutoCompleteResult> results;
  unsigned position = 0;
  expectError("Autocomplete parameter not valid for mode", [&] {
    node.autoComplete(session.context, {"a"}, "", position, false, false,
                      results, output);
  });
}

}  // namespace
}  // namespace QorCliUtilities
