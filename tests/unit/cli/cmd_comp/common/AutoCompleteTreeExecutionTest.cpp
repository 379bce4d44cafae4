#include <gtest/gtest.h>

#include "ACKeyword.h"
#include "AutoCompleteTree.h"
#include "Error.h"
#include "PipeOutput1.h"
#include "RecordingCommand.h"
#include "RecordingContext.h"
#include "Refusal.h"
#include "TestNode.h"

namespace QorCliUtilities {
namespace {

using Tokens = std::vector<std::string>;
using QorUnit::Calls;
using QorUnit::expectError;
using QorUnit::RecordingCommand;
using QorUnit::RecordingContext;
using QorUnit::TestNode;
using QorUnit::TestNodeSetup;

class Execution : public ::testing::Test {
 protected:
  AutoCompleteNode* node(TestNodeSetup setup) {
    return new TestNode(std::move(setup), calls);
  }

  static AutoCompleteNode* word(char const* keyword, bool terminal,
                                unsigned mode = QOR_CLI_MODE_ANY) {
    return new ACKeyword(keyword, "", {mode}, terminal, false,
                         QorCliCompletionToken_1T{0}, false, false, false,
                         false, false);
  }

  static AutoCompleteNode* end(RecordingCommand& command) {
    return new AutoCompleteNode(&command);
  }

  int run(char const* line) {
    return tree.executeCommand(session.context, line, &matches, output);
  }

  // How often the two commands have been run: {first, second}.
  std::pair<std::size_t, std::size_t> runs() const {
    return {first.runs.size(), second.runs.size()};
  }

  using Runs = std::pair<std::size_t, std::size_t>;

  Calls calls;
  RecordingContext session;
  QorCliPipe::PipeOutput1 output;
  RecordingCommand first{"first", 1};
  RecordingCommand second{"second", 2};
  unsigned matches = 0;
  AutoCompleteTree tree;
};

TEST_F(Execution, ATreeWithoutARootRunsNothing) {
  EXPECT_EQ(run("x"), 0);
  EXPECT_EQ(tree.execute(session.context, {"x"}, &matches, output), 0);
  EXPECT_EQ(matches, 0U);
}

TEST_F(Execution, AnEmptyLineRunsNothing) {
  tree.addPathToTree({node({"any", {QOR_CLI_MODE_ANY}, true}), end(first)});
  EXPECT_EQ(run(""), 0);
  EXPECT_EQ(run("   "), 0);
  EXPECT_EQ(matches, 0U);
  EXPECT_EQ(calls, Calls{});
}

TEST_F(Execution, AnInvalidLineFails) {
  tree.addPathToTree({node({"any", {QOR_CLI_MODE_ANY}, true}), end(first)});
  EXPECT_EQ(run("a\"b\""), -1);
  EXPECT_EQ(matches, 0U);
  EXPECT_EQ(calls, Calls{});
  EXPECT_TRUE(output.getOutput().empty());
}

TEST_F(Execution, RunsTheCommandBelowTheLastKeyword) {
  tree.addPathToTree({word("show", false), word("log", true), end(first)});
  EXPECT_EQ(run("SHOW log"), 1);
  EXPECT_EQ(matches, 1U);
  EXPECT_EQ(first.runs, (std::vector<Tokens>{{"SHOW", "log"}}));
  EXPECT_EQ(output.getOutput(), Tokens{"first ran"});
}

TEST_F(Execution, RunsTheCommandOfTheMatchingBranch) {
  tree.addPathToTree({word("x", false), word("y", true), end(first)});
  tree.addPathToTree({word("x", false), word("z", true), end(second)});
  EXPECT_EQ(run("x z"), 2);
  EXPECT_EQ(matches, 1U);
  EXPECT_EQ(runs(), Runs(0, 1));
}

TEST_F(Execution, BacktracksOutOfADeadEnd) {
  tree.addPathToTree({node({"any"}), word("y", true), end(first)});
  tree.addPathToTree({word("x", false), word("z", true), end(second)});
  EXPECT_EQ(run("x z"), 2);
  EXPECT_EQ(runs(), Runs(0, 1));
  EXPECT_EQ(calls, Calls{"match any 0 executing"});
}

TEST_F(Execution, RunsOnlyTheFirstOfTwoMatchingCommands) {
  for (char const* line : {"x", "x y"}) {
    matches = 0;
    tree.deleteTree();
    calls.clear();
    tree.addPathToTree({node({"a", {QOR_CLI_MODE_ANY}, true}), end(first)});
    tree.addPathToTree({node({"b", {QOR_CLI_MODE_ANY}, true}), end(second)});
    tree.addPathToTree({node({"a"}), word("y", true), end(first)});
    tree.addPathToTree({node({"b"}), word("y", true), end(second)});
    EXPECT_EQ(run(line), 1) << line;
    EXPECT_EQ(matches, 1U);
    for (std::string const& call : calls) {
      EXPECT_NE(call.substr(0, 7), "match b") << line;
    }
  }
  EXPECT_EQ(runs(), Runs(2, 0));
}

TEST_F(Execution, AFailedCommandEndsTheSearch) {
  first.result = -1;
  tree.addPathToTree({node({"a", {QOR_CLI_MODE_ANY}, true}), end(first)});
  tree.addPathToTree({node({"b", {QOR_CLI_MODE_ANY}, true}), end(second)});
  EXPECT_EQ(run("x"), -1);
  EXPECT_EQ(matches, 1U);
  EXPECT_EQ(runs(), Runs(1, 0));
}

TEST_F(Execution, ACommandWithAnyResultEndsTheSearch) {
  first.result = 0;
  tree.addPathToTree(
      {word("x", false), node({"a", {QOR_CLI_MODE_ANY}, true}), end(first)});
  tree.addPathToTree(
      {node({"any"}), node({"b", {QOR_CLI_MODE_ANY}, true}), end(second)});
  EXPECT_EQ(run("x y"), 0);
  EXPECT_EQ(runs(), Runs(1, 0));
}

TEST_F(Execution, IncrementsTheCallersCounter) {
  matches = 5;
  tree.addPathToTree({word("x", true), end(first)});
  EXPECT_EQ(run("y"), 0);
  EXPECT_EQ(matches, 5U);
  EXPECT_EQ(run("x"), 1);
  EXPECT_EQ(matches, 6U);
}

TEST_F(Execution, TheKeywordMustBeTerminal) {
  tree.addPathToTree({word("x", false), end(first)});
  EXPECT_EQ(run("x"), 0);
  EXPECT_EQ(matches, 0U);
  tree.getRoot()->children()[0]->setPotentialTerminalNode(true);
  EXPECT_EQ(run("x"), 1);
}

TEST_F(Execution, RequiresAWholeWord) {
  tree.addPathToTree({word("show", true), end(first)});
  for (char const* line : {"sho", "shows", "show x", "x show"}) {
    EXPECT_EQ(run(line), 0) << line;
  }
  EXPECT_EQ(matches, 0U);
}

TEST_F(Execution, ANodeOfAnotherModeIsSkipped) {
  tree.addPathToTree({word("x", false, 7), word("y", true, 7), end(first)});
  tree.addPathToTree({word("z", true, 7), end(first)});
  EXPECT_EQ(run("x y"), 0);
  EXPECT_EQ(run("z"), 0);
  EXPECT_EQ(matches, 0U);
  session.record.mode = QorCliModeEnum_1T{7};
  EXPECT_EQ(run("x y"), 1);
  EXPECT_EQ(run("z"), 1);
  EXPECT_EQ(matches, 2U);
}

TEST_F(Execution, RunsAHiddenNode) {
  tree.addPathToTree({node({"x", {QOR_CLI_MODE_ANY}, true, true}), end(first)});
  EXPECT_EQ(run("x"), 1);
}

TEST_F(Execution, ANodeMayMatchSeveralTokens) {
  TestNodeSetup greedy{"two"};
  greedy.swallows = 2;
  tree.addPathToTree({node(greedy), word("go", true), end(first)});
  EXPECT_EQ(run("a b go"), 1);
  EXPECT_EQ(calls, Calls{"match two 0 executing"});
  EXPECT_EQ(run("a go"), 1);
  EXPECT_EQ(run("a b c go"), 0);
}

TEST_F(Execution, AGreedyNodeIsRetriedAtTheLastToken) {
  TestNodeSetup greedy{"all"};
  greedy.swallows = 99;
  tree.addPathToTree({node(greedy), word("go", true), end(first)});
  EXPECT_EQ(run("a b go"), 1);
  EXPECT_EQ(calls, (Calls{"match all 0 executing", "match all 2 executing"}));
  EXPECT_EQ(run("a b c"), 0);
  EXPECT_EQ(matches, 1U);
}

TEST_F(Execution, AGreedyNodeMayEndTheLine) {
  TestNodeSetup greedy{"all", {QOR_CLI_MODE_ANY}, true};
  greedy.swallows = 99;
  tree.addPathToTree({node(greedy), end(first)});
  tree.addPathToTree({node({"all"}), word("go", true), end(second)});
  first.result = 0;
  EXPECT_EQ(run("a b go"), 0);
  EXPECT_EQ(matches, 1U);
  EXPECT_EQ(runs(), Runs(1, 0));
  EXPECT_EQ(first.runs[0], (Tokens{"a", "b", "go"}));
  EXPECT_EQ(calls, (Calls{"delete all", "match all 0 executing",
                          "match all 2 executing"}));
}

TEST_F(Execution, AKeywordWithoutValidationConsumesNoWord) {
  tree.addPathToTree({word("quick", false), word("log", false),
                      word("now", true), end(first)});
  tree.getRoot()->children()[0]->setValidationType(VALIDATION_NONE);
  EXPECT_EQ(run("log now"), 1);
  EXPECT_EQ(run("quick log now"), 0);
}

TestNodeSetup multiToken(char const* keyword, unsigned elements) {
  TestNodeSetup setup{keyword, {QOR_CLI_MODE_ANY}, true};
  setup.multiToken = true;
  setup.elements = elements;
  return setup;
}

TEST_F(Execution, AMultiTokenNodeIsMatchedUpToItsLastElement) {
  for (char const* line : {"set a b", "set a b c d"}) {
    tree.deleteTree();
    tree.addPathToTree(
        {word("set", false), node(multiToken("pair", 2)), end(first)});
    calls.clear();
    EXPECT_EQ(run(line), 1) << line;
    EXPECT_EQ(calls, (Calls{"match pair 1 executing", "match pair 2 executing",
                            "reset pair", "match pair 1 executing"}));
  }
  EXPECT_EQ(first.runs[1], (Tokens{"set", "a", "b", "c", "d"}));
}

TEST_F(Execution, AMultiTokenNodeMayEndEarlyOnlyByItsKeyword) {
  struct {
    char const* keyword;
    int result;
  } const rows[] = {{"MultiParms", 1}, {"multiparms", 0}, {"triple", 0}};
  for (auto const& row : rows) {
    tree.deleteTree();
    tree.addPathToTree(
        {word("set", false), node(multiToken(row.keyword, 3)), end(first)});
    EXPECT_EQ(run("set a b"), row.result) << row.keyword;
  }
  EXPECT_EQ(matches, 1U);
}

TEST_F(Execution, AMultiTokenNodeAtTheLastTokenMayEndTheLine) {
  tree.addPathToTree(
      {word("set", false), node(multiToken("triple", 3)), end(first)});
  EXPECT_EQ(run("set a"), 1);
  EXPECT_EQ(calls, Calls{"match triple 1 executing"});
}

TEST_F(Execution, AMultiTokenNodeThatRejectsATokenIsSkipped) {
  TestNodeSetup picky = multiToken("MultiParms", 0);
  picky.accepts = "a";
  tree.addPathToTree({node(picky), end(first)});
  tree.addPathToTree({node(multiToken("pair", 2)), end(second)});
  EXPECT_EQ(run("a b"), 2);
  EXPECT_EQ(runs(), Runs(0, 1));
  EXPECT_EQ(calls, (Calls{"match MultiParms 0 executing",
                          "match MultiParms 1 executing",
                          "match pair 0 executing", "match pair 1 executing",
                          "reset pair", "match pair 0 executing"}));
}

TEST_F(Execution, AMultiTokenNodeMustBeTerminal) {
  TestNodeSetup setup = multiToken("MultiParms", 0);
  setup.terminal = false;
  tree.addPathToTree({node(setup), end(first)});
  tree.addPathToTree({node(multiToken("pair", 2)), end(second)});
  EXPECT_EQ(run("a b"), 2);
}

TEST_F(Execution, AnUnauthorizedCommandIsAMatchThatFails) {
  first.authorized = false;
  tree.addPathToTree({node({"a", {QOR_CLI_MODE_ANY}, true}), end(first)});
  tree.addPathToTree({node({"b", {QOR_CLI_MODE_ANY}, true}), end(second)});
  EXPECT_EQ(run("x"), -1);
  EXPECT_EQ(matches, 1U);
  EXPECT_EQ(output.getOutput(), Tokens{"Not allowed"});
  EXPECT_EQ(runs(), Runs(0, 0));
}

TEST_F(Execution, AFailureToSetThePromptIsAnError) {
  session.record.result = 7;
  first.prompt = "p>";
  tree.addPathToTree({word("x", true), end(first)});
  expectError("Unable to set prompt", [&] { run("x"); });
  EXPECT_EQ(matches, 1U);
  EXPECT_EQ(runs(), Runs(1, 0));
}

// A node that always rejects the mode.
struct Rejecting : TestNode {
  using TestNode::TestNode;
  bool isMatch(CliApiContext&, std::vector<std::string> const&, unsigned&,
               IOutput&, bool) override {
    throw Error("refused", 3);
  }
};

TEST_F(Execution, PropagatesAnErrorOfANode) {
  tree.addPathToTree(
      {new Rejecting({"x"}, calls), word("y", true), end(first)});
  for (char const* line : {"x", "x y"}) {
    EXPECT_THROW(run(line), Error) << line;
  }
}

TEST_F(Execution, ValidationRequiresAMatchAChildAndATerminalNode) {
  struct {
    TestNodeSetup setup;
    bool withChild;
    int result;
  } rows[] = {
      {{"x", {}, true, false, "b"}, true, 1},
      {{"x", {}, true, false, "other"}, true, 0},
      {{"x", {}, true, false, "b"}, false, 0},
      {{"x", {}, false, false, "b"}, true, 0},
  };
  for (auto& row : rows) {
    matches = 0;
    TestNode parent(row.setup, calls);
    AutoCompleteNode child(&first);
    if (row.withChild) parent.addChild(&child);
    EXPECT_EQ(tree.executeValidation(&parent, session.context, {"a", "b"}, 1,
                                     &matches, output),
              row.result);
    EXPECT_EQ(matches, row.result == 0 ? 0U : 1U);
  }
}

TEST_F(Execution, ValidationRunsTheFirstExecutableChild) {
  TestNode parent({"x", {}, true}, calls);
  TestNode plain({"plain"}, calls);
  AutoCompleteNode firstEnd(&first);
  AutoCompleteNode secondEnd(&second);
  parent.addChild(&plain);
  EXPECT_EQ(tree.executeValidation(&parent, session.context, {"a"}, 0, &matches,
                                   output),
            0);
  EXPECT_EQ(matches, 0U);
  parent.addChild(&secondEnd);
  parent.addChild(&firstEnd);
  EXPECT_EQ(tree.executeValidation(&parent, session.context, {"a"}, 0, &matches,
                                   output),
            2);
  EXPECT_EQ(matches, 1U);
  EXPECT_EQ(runs(), Runs(0, 1));
}

TEST_F(Execution, SearchStartsAtTheGivenPosition) {
  tree.addPathToTree({word("x", true), end(first)});
  EXPECT_EQ(tree.executeSearch(tree.getRoot(), session.context, {"a", "x"}, 1,
                               &matches, output),
            1);
  EXPECT_EQ(tree.executeSearch(tree.getRoot(), session.context, {"a", "x"}, 0,
                               &matches, output),
            0);
  EXPECT_EQ(first.runs[0], (Tokens{"a", "x"}));
}

TEST_F(Execution, EveryCommandOfABranchMustBeAuthorized) {
  tree.addPathToTree({word("x", false), word("y", true), end(first)});
  tree.addPathToTree({word("x", false), word("z", true), end(second)});
  AutoCompleteNode* const x = tree.getRoot()->children()[0];
  EXPECT_TRUE(tree.isCommandAuthorized(tree.getRoot(), session.context));
  second.authorized = false;
  EXPECT_FALSE(tree.isCommandAuthorized(tree.getRoot(), session.context));
  EXPECT_FALSE(tree.isCommandAuthorized(x, session.context));
  EXPECT_TRUE(tree.isCommandAuthorized(x->children()[0], session.context));
  EXPECT_FALSE(tree.isCommandAuthorized(x->children()[1], session.context));
  TestNode leaf({"leaf"}, calls);
  EXPECT_TRUE(tree.isCommandAuthorized(&leaf, session.context));
}

}  // namespace
}  // namespace QorCliUtilities
