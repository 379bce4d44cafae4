#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ACPipeKeyword.h"
#include "LinesOutput.h"
#include "PipeAction.h"
#include "RecordingCommand.h"
#include "RecordingContext.h"

namespace QorCliUtilities {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A tree with the one command "tail".
class PipeActionTest : public testing::Test {
 protected:
  PipeActionTest() {
    tree.addPathToTree(
        {new ACPipeKeyword("tail", "The end", {QOR_CLI_MODE_ANY}, true),
         new AutoCompleteNode(&command)});
  }

  int perform(QorCliActionEnum_2T kind, char const* line, char const* input) {
    return performPipeAction(tree, session.context,
                             {kind, 7, &matches, line, input}, output);
  }

  std::vector<std::string> const& calls() const { return session.record.calls; }

  QorUnit::RecordingCommand command{"Tail", 4};
  AutoCompleteTree tree;
  QorUnit::RecordingContext session;
  LinesOutput output;
  unsigned matches = 0;
};

TEST_F(PipeActionTest, ExecutionPassesTheInputToTheCommand) {
  output.push_back(std::string("left over"));
  EXPECT_EQ(perform(QOR_CLI_ACTION_EXECUTE, "tail", "a\nb\n"), 4);
  EXPECT_EQ(matches, 1U);
  EXPECT_THAT(command.runs, ElementsAre(ElementsAre("tail")));
  EXPECT_THAT(output.getOutput(), ElementsAre("a\nb\n", "Tail ran"));
  EXPECT_EQ(session.context.getActionId(), 7U);
}

TEST_F(PipeActionTest, NullTextsAreEmpty) {
  EXPECT_EQ(perform(QOR_CLI_ACTION_EXECUTE, nullptr, nullptr), 0);
  EXPECT_EQ(matches, 0U);
  EXPECT_THAT(output.getOutput(), ElementsAre(""));
}

TEST_F(PipeActionTest, CandidatesGoToTheContext) {
  tree.addPathToTree(
      {new ACPipeKeyword("tally", "A sum", {QOR_CLI_MODE_ANY}, true),
       new AutoCompleteNode(&command)});
  EXPECT_EQ(perform(QOR_CLI_ACTION_COMPLETE, "ta", "ignored"), 0);
  EXPECT_THAT(calls(),
              ElementsAre("setSortableAutocompleteResult 0 2 7 3 tail () The "
                          "end\nType: Command 6 tail",
                          "setSortableAutocompleteResult 1 2 7 3 tally () A "
                          "sum\nType: Command 6 tally"));
  EXPECT_THAT(output.getOutput(), IsEmpty());
  EXPECT_THAT(command.runs, IsEmpty());
}

// After a whole word, completion offers to end the line; help shows the word.
TEST_F(PipeActionTest, CompletionAndHelpDiffer) {
  EXPECT_EQ(perform(QOR_CLI_ACTION_COMPLETE, "tail", ""), 0);
  ASSERT_EQ(calls().size(), 1U);
  EXPECT_THAT(calls().front(), testing::HasSubstr("<cr>"));
  session.record.calls.clear();
  EXPECT_EQ(perform(QOR_CLI_ACTION_HELP, "tail", ""), 0);
  ASSERT_EQ(calls().size(), 1U);
  EXPECT_THAT(calls().front(), testing::HasSubstr("The end"));
}

TEST_F(PipeActionTest, OtherActionsDoNothing) {
  EXPECT_EQ(perform(QorCliActionEnum_2T{1}, "tail", "a\n"), 0);
  EXPECT_EQ(perform(QorCliActionEnum_2T{5}, "tail", "a\n"), 0);
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_THAT(command.runs, IsEmpty());
}

TEST_F(PipeActionTest, OutputSkipsButCountsEmptyStrings) {
  emitOutput(session.context, 7, {"", "a", "", "b"}, 0);
  EXPECT_THAT(calls(), ElementsAre("setOutput 1 4 7 a", "setOutput 3 4 7 b"));
}

TEST_F(PipeActionTest, OutputOfAFailureIsItsFirstString) {
  emitOutput(session.context, 7, {"", "error", "more"}, -1);
  EXPECT_THAT(calls(), ElementsAre("setOutput 1 3 7 error"));
}

TEST_F(PipeActionTest, AnswersWithTheOutputOfACommand) {
  PipeAction action{QOR_CLI_ACTION_EXECUTE, 7, &matches, "head", "a\n"};
  EXPECT_EQ(answerPipeAction(tree, session.context, action), 0);
  EXPECT_THAT(calls(), IsEmpty());
  action.commandLine = "tail";
  EXPECT_EQ(answerPipeAction(tree, session.context, action), 4);
  EXPECT_THAT(calls(), ElementsAre("setOutput 0 2 7 a\n"));
  action.commandMatchCount = nullptr;
  EXPECT_EQ(answerPipeAction(tree, session.context, action), -1);
  EXPECT_EQ(command.runs.size(), 1U);
}

TEST_F(PipeActionTest, NeedsARecordAndACounter) {
  CliApiContext5 const none(nullptr);
  EXPECT_TRUE(canAnswer(session.context, &matches));
  EXPECT_FALSE(canAnswer(none, &matches));
  EXPECT_FALSE(canAnswer(session.context, static_cast<unsigned*>(nullptr)));
  EXPECT_TRUE(canAnswer(session.context));
  EXPECT_FALSE(canAnswer(none));
}

}  // namespace
}  // namespace QorCliUtilities
