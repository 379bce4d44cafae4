#include <gtest/gtest.h>

#include "ACFilterOptions.h"
#include "ACPipeKeyword.h"
#include "Candidates.h"
#include "FilterCommand.h"
#include "PipeCmdTree.h"
#include "PipeOutput1.h"
#include "RecordingContext.h"

namespace QorCliPipe {
namespace {

using QorCliUtilities::ACPipeKeyword;
using QorCliUtilities::AutoCompleteNode;
using QorCliUtilities::Validation_Type;
using Lines = std::vector<std::string>;

TEST(FilterCommand, RecognisesNumbers) {
  struct {
    char const* text;
    bool isNumber;
  } const rows[] = {
      {"", true},    {"0", true},   {"0012", true},  {"9876543210", true},
      {"-1", false}, {"+1", false}, {"1a", false},   {" 1", false},
      {"1 ", false}, {"a", false},  {"0x10", false},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(FilterCommand::isNumber(row.text), row.isNumber) << row.text;
  }
}

TEST(FilterCommand, IsNamedFilter) {
  EXPECT_STREQ(FilterCommand::instance().name(), "Filter");
}

// The nodes of the path, starting with the root's child.
std::vector<AutoCompleteNode*> path() {
  FilterCommand::instance();
  std::vector<AutoCompleteNode*> nodes;
  AutoCompleteNode* node = PipeCmdTree::instance().getRoot();
  while (!node->children().empty()) {
    EXPECT_EQ(node->children().size(), 1U);
    node = node->children().front();
    nodes.push_back(node);
  }
  return nodes;
}

TEST(FilterCommand, AddsItsPathOnce) {
  EXPECT_EQ(path().size(), 3U);
  EXPECT_EQ(&FilterCommand::instance(), &FilterCommand::instance());
  EXPECT_EQ(path().size(), 3U);
}

TEST(FilterCommand, ThePathBeginsWithItsKeyword) {
  auto* const keyword = dynamic_cast<ACPipeKeyword*>(path().at(0));
  ASSERT_NE(keyword, nullptr);
  EXPECT_EQ(keyword->keyword(), "filter");
  EXPECT_EQ(keyword->helpText(QOR_CLI_MODE_EXEC),
            "Print lines matching a pattern");
  EXPECT_FALSE(keyword->potentialTerminalNode());
  EXPECT_FALSE(keyword->isHidden());
  EXPECT_FALSE(keyword->isExecutable());
  EXPECT_EQ(keyword->validationType(), Validation_Type{3});
  EXPECT_TRUE(keyword->isValidForMode(QorCliModeEnum_1T{12345}));
}

TEST(FilterCommand, TheKeywordIsOfferedWithOrWithoutACursor) {
  QorUnit::RecordingContext session;
  PipeOutput1 output;
  for (char const* cursor : {"", "a=1"}) {
    session.record.cursor = cursor;
    std::vector<QorCliUtilities::AutoCompleteResult> results;
    unsigned position = 0;
    path().at(0)->autoComplete(session.context, {}, "", position, false, false,
                               results, output);
    EXPECT_EQ(QorUnit::describe(results),
              Lines{"5 filter [6 filter] () Print lines matching a pattern\n"
                    "Type: Command"});
  }
}

TEST(FilterCommand, ThePathContinuesWithItsOptions) {
  AutoCompleteNode* const options = path().at(1);
  EXPECT_NE(dynamic_cast<ACFilterOptions*>(options), nullptr);
  EXPECT_EQ(options->keyword(), "MultiParms");
  EXPECT_TRUE(options->potentialTerminalNode());
  EXPECT_FALSE(options->isHidden());
  EXPECT_EQ(options->validationType(), Validation_Type{0});
  EXPECT_TRUE(options->isValidForMode(QorCliModeEnum_1T{12345}));
}

TEST(FilterCommand, ThePathEndsWithTheCommand) {
  AutoCompleteNode* const end = path().at(2);
  EXPECT_TRUE(end->isExecutable());
  EXPECT_EQ(end->toString(), "Filter command");
}

TEST(FilterCommand, RunsFromACommandLine) {
  FilterCommand::instance();
  struct {
    char const* line;
    unsigned matches;
    int status;
    Lines kept;
  } const rows[] = {
      {"filter b", 1, 0, {"b\n", "ab\n"}},
      {"FILTER -v b", 1, 0, {"a\n"}},
      {"filter --after 1 -i B", 1, 0, {"b\n", "ab\n"}},
      {"filter --bogus", 1, -1, {"ERROR: Command not found\n"}},
      {"filter", 0, 0, {"a\nb\nab\n"}},
      {"filt b", 0, 0, {"a\nb\nab\n"}},
      {"filter a\"b\"", 0, -1, {"a\nb\nab\n"}},
      {"", 0, 0, {"a\nb\nab\n"}},
  };
  unsigned actionId = 0;
  for (auto const& row : rows) {
    SCOPED_TRACE(row.line);
    QorUnit::RecordingContext session;
    session.context.setActionId(++actionId);
    PipeOutput1 output;
    output.push_back(std::string("a\nb\nab\n"));
    unsigned matches = 0;
    EXPECT_EQ(PipeCmdTree::instance().executeCommand(session.context, row.line,
                                                     &matches, output),
              row.status);
    EXPECT_EQ(matches, row.matches);
    EXPECT_EQ(output.getOutput(), row.kept);
  }
}

TEST(FilterCommand, ParsesItsWordsAndReadsTheWholeSink) {
  struct {
    Lines words;
    Lines sink;
    int status;
    Lines kept;
  } const rows[] = {
      {{}, {"a\n"}, -1, {"ERROR: Command not found\n"}},
      {{"filter"}, {"a\n"}, -1, {"ERROR: Command not found\n"}},
      {{"filter", "b"}, {}, 0, {}},
      {{"filter", "b"}, {"b\n", "a\n", "ab\n"}, 0, {"b\n", "ab\n"}},
      {{"filter", "ab"}, {"a", "b\nb", "\n"}, 0, {"ab\n"}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.words) +
                 testing::PrintToString(row.sink));
    QorUnit::RecordingContext session;
    PipeOutput1 output;
    output.push_back(row.sink);
    EXPECT_EQ(
        FilterCommand::instance().execute(session.context, row.words, output),
        row.status);
    EXPECT_EQ(output.getOutput(), row.kept);
  }
}

}  // namespace
}  // namespace QorCliPipe
