#include <gtest/gtest.h>

#include "ACKeyword.h"
#include "AutoCompleteTree.h"
#include "Candidates.h"
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

constexpr bool kTerminal = true;

// A node that offers and matches its own keyword.
TestNodeSetup echo(char const* keyword, bool terminal = false) {
  TestNodeSetup setup{keyword, {QOR_CLI_MODE_ANY}, terminal};
  setup.accepts = keyword;
  setup.offers = {keyword};
  return setup;
}

TestNodeSetup multiToken(char const* keyword, unsigned elements) {
  TestNodeSetup setup = echo(keyword, kTerminal);
  setup.accepts = "";
  setup.multiToken = true;
  setup.elements = elements;
  return setup;
}

ACKeyword* keyword(char const* text, bool terminal, bool hidden = false) {
  return new ACKeyword(text, "Help", {QOR_CLI_MODE_ANY}, terminal, hidden,
                       QorCliCompletionToken_1T{0}, false, true, false, false,
                       false);
}

class Completion : public ::testing::Test {
 protected:
  AutoCompleteNode* node(TestNodeSetup setup) {
    return new TestNode(std::move(setup), calls);
  }

  AutoCompleteNode* end() { return new AutoCompleteNode(&command); }

  // The texts offered, separated by blanks.
  std::string complete(char const* line) {
    std::vector<AutoCompleteResult> results;
    status = tree.autoCompleteCommand(session.context, line, "last", results,
                                      output);
    return QorUnit::texts(results);
  }

  std::string help(char const* line) {
    std::vector<AutoCompleteResult> results;
    status = tree.helpRequest(session.context, line, results, output);
    return QorUnit::texts(results);
  }

  Calls calls;
  RecordingContext session;
  QorCliPipe::PipeOutput1 output;
  RecordingCommand command{"c"};
  RecordingCommand forbidden{"forbidden"};
  int status = 99;
  AutoCompleteTree tree;
};

TEST_F(Completion, ATreeWithoutARootOffersNothing) {
  EXPECT_EQ(complete("x"), "");
  EXPECT_EQ(status, 0);
  EXPECT_EQ(help(""), "");
  EXPECT_EQ(status, 0);
}

TEST_F(Completion, AnInvalidLineFailsAndKeepsTheList) {
  tree.addPathToTree({node(echo("x"))});
  std::vector<AutoCompleteResult> results{
      {QOR_CLI_TOKEN_WORD, "old", "", {1, "old"}}};
  EXPECT_EQ(
      tree.autoCompleteCommand(session.context, "a\"b\"", "", results, output),
      -1);
  EXPECT_EQ(tree.helpRequest(session.context, "x a\"b\" ", results, output),
            -1);
  EXPECT_EQ(QorUnit::texts(results), "old");
  EXPECT_EQ(calls, Calls{});
  EXPECT_TRUE(output.getOutput().empty());
}

TEST_F(Completion, CandidatesAreAppendedToTheList) {
  tree.addPathToTree({node(echo("x", kTerminal))});
  std::vector<AutoCompleteResult> results{
      {QOR_CLI_TOKEN_WORD, "old", "", {1, "old"}}};
  tree.autoCompleteCommand(session.context, "x", "", results, output);
  EXPECT_EQ(QorUnit::texts(results), "old <cr>");
}

TEST_F(Completion, AnEmptyLineAsksEveryAuthorizedFirstNode) {
  forbidden.authorized = false;
  tree.addPathToTree({node(echo("a")), node(echo("below"))});
  tree.addPathToTree({node({"other-mode", {7}})});
  tree.addPathToTree({node(echo("b")), new AutoCompleteNode(&forbidden)});
  tree.addPathToTree({node(echo("c"))});
  EXPECT_EQ(help(""), "a c");
  EXPECT_EQ(complete("  "), "a c");
  EXPECT_EQ(calls,
            (Calls{"complete a 0 '' help", "complete c 0 '' help",
                   "complete a 0 'last' space", "complete c 0 'last' space"}));
}

TEST_F(Completion, OnlyABlankEndsTheLastWord) {
  tree.addPathToTree({node(echo("x")), node(echo("y"))});
  complete("x\t");
  complete("x ");
  complete("x");
  EXPECT_EQ(calls, (Calls{"match x 0 completing", "complete y 1 'last'",
                          "match x 0 completing", "complete y 1 'last' space",
                          "match x 0 completing", "complete y 1 'last'"}));
}

TEST_F(Completion, ANodeCompletesItsPartialWord) {
  tree.addPathToTree({node(echo("xyz")), node(echo("below"))});
  EXPECT_EQ(complete("x"), "xyz");
  EXPECT_EQ(help("x"), "xyz");
  EXPECT_EQ(calls, (Calls{"match xyz 0 completing", "complete xyz 0 'last'",
                          "match xyz 0 completing", "complete xyz 0 '' help"}));
}

TEST_F(Completion, ACompleteUnknownWordOffersNothing) {
  TestNodeSetup spaces = echo("with spaces");
  spaces.internalSpaces = true;
  tree.addPathToTree({node(echo("xyz"))});
  EXPECT_EQ(complete("x "), "");
  EXPECT_EQ(help("x "), "");
  tree.addPathToTree({node(spaces)});
  EXPECT_EQ(complete("x "), "with spaces");
  EXPECT_EQ(help("x "), "with spaces");
}

TEST_F(Completion, EveryMatchingBranchIsAsked) {
  TestNodeSetup any = echo("any");
  any.accepts = "";
  tree.addPathToTree({node(echo("x")), node(echo("a"))});
  tree.addPathToTree({node(echo("y")), node(echo("b"))});
  tree.addPathToTree({node(any), node(echo("c"))});
  tree.addPathToTree({node(echo("x")), node(echo("d"))});
  EXPECT_EQ(complete("x p"), "a d c");
  EXPECT_EQ(complete("x "), "a d c");
  EXPECT_EQ(complete("x a"), "d c") << "a is matched, and not terminal";
}

// Unlike execution, completion does not retry such a node.
TEST_F(Completion, AGreedyNodeLeavesNoTokenToItsChildren) {
  TestNodeSetup greedy = echo("all");
  greedy.accepts = "";
  greedy.swallows = 99;
  tree.addPathToTree({node(greedy), keyword("go", kTerminal)});
  EXPECT_EQ(complete("a"), "go");
  for (char const* line : {"a go", "a b go"}) {
    expectError("isMatch keyword past end of token list",
                [&] { complete(line); });
  }
}

// The line matches the keyword below.
TEST_F(Completion, AMatchedNodeOffersByItsProperties) {
  struct {
    char const* name;
    bool terminal;
    bool hidden;
    bool spaces;
    bool noReturn;
    // Complete "x", complete "x ", help "x", help "x ".
    char const* offers[4];
  } const rows[] = {
      {"plain",
       false,
       false,
       false,
       false,
       {"child", "child", "x also child", "child"}},
      {"with spaces",
       false,
       false,
       true,
       false,
       {"x also child", "x also child", "x also child", "x also child"}},
      {"hidden with spaces",
       false,
       true,
       true,
       false,
       {"child", "child", "x also child", "x also child"}},
      {"terminal",
       true,
       false,
       false,
       false,
       {"also <cr> child", "<cr> child", "x also child", "child"}},
      {"hidden terminal",
       true,
       true,
       false,
       false,
       {"also <cr> child", "<cr> child", "x also child", "child"}},
      {"terminal with spaces",
       true,
       false,
       true,
       false,
       {"also <cr> child", "also <cr> child", "x also child", "x also child"}},
      {"terminal without <cr>",
       true,
       false,
       false,
       true,
       {"x also child", "child", "x also child", "child"}},
      {"terminal with spaces without <cr>",
       true,
       false,
       true,
       true,
       {"x also child", "x also child", "x also child", "x also child"}},
      {"without <cr>",
       false,
       false,
       false,
       true,
       {"child", "child", "x also child", "child"}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    TestNodeSetup setup{"x", {QOR_CLI_MODE_ANY}, row.terminal, row.hidden, "x"};
    setup.offers = {"x", "also"};
    setup.internalSpaces = row.spaces;
    setup.noReturn = row.noReturn;
    tree.deleteTree();
    tree.addPathToTree({node(setup), node(echo("child"))});
    EXPECT_EQ(complete("x"), row.offers[0]);
    EXPECT_EQ(complete("x "), row.offers[1]);
    EXPECT_EQ(help("x"), row.offers[2]);
    EXPECT_EQ(help("x "), row.offers[3]);
  }
}

TEST_F(Completion, ANodeIsAskedAtItsWordAndItsChildrenAtTheNext) {
  TestNodeSetup greedy = echo("x", kTerminal);
  greedy.accepts = "";
  greedy.swallows = 1;
  tree.addPathToTree({node(echo("first")), node(greedy), node(echo("a"))});
  tree.addPathToTree({node(echo("first")), node(greedy), node(echo("b"))});
  calls.clear();
  complete("first x");
  EXPECT_EQ(calls, (Calls{"match first 0 completing", "match x 1 completing",
                          "complete x 1 'last'", "complete a 2 'last'",
                          "complete b 2 'last'"}));
}

TEST_F(Completion, ANodeMayMatchSeveralTokens) {
  TestNodeSetup two = echo("two");
  two.accepts = "";
  two.swallows = 2;
  tree.addPathToTree({node(two), node(echo("go", kTerminal))});
  EXPECT_EQ(complete("a b g"), "go");
  EXPECT_EQ(complete("a b go"), "<cr>");
  EXPECT_EQ(complete("a b go on"), "");
}

TEST_F(Completion, ChildrenOfTheLastWordAreFilteredByModeOnly) {
  forbidden.authorized = false;
  TestNodeSetup other = echo("other-mode");
  other.modes = {7};
  tree.addPathToTree({node(echo("x")), node(echo("a"))});
  tree.addPathToTree({node(echo("x")), node(other)});
  tree.addPathToTree({node(echo("x")), node(echo("b"))});
  EXPECT_EQ(complete("x"), "a b");
  EXPECT_EQ(help("x "), "a b");
  session.record.mode = QorCliModeEnum_1T{7};
  EXPECT_EQ(complete("x "), "a other-mode b");

  // Validation does not check authorization below its node.
  AutoCompleteNode forbiddenEnd(&forbidden);
  TestNode top(echo("x"), calls);
  TestNode child(echo("child"), calls);
  child.addChild(&forbiddenEnd);
  top.addChild(nullptr);
  top.addChild(&child);
  std::vector<AutoCompleteResult> results;
  tree.autocompleteValidation(&top, session.context, {"x"}, "", 0, results,
                              output, true, false);
  EXPECT_EQ(QorUnit::texts(results), "child");
}

TEST_F(Completion, ANodeOfAnotherModeIsSkippedAtEveryLevel) {
  TestNodeSetup bound = echo("x");
  bound.modes = {7};
  tree.addPathToTree({node(bound), node(echo("a"))});
  for (char const* line : {"", "x", "x ", "x a"}) {
    EXPECT_EQ(complete(line), "") << line;
    EXPECT_EQ(help(line), "") << line;
  }
  EXPECT_EQ(calls, Calls{});
  session.record.mode = QorCliModeEnum_1T{7};
  EXPECT_EQ(complete("x "), "a");
}

TEST_F(Completion, ABranchWithAForbiddenCommandOffersNothing) {
  forbidden.authorized = false;
  tree.addPathToTree({node(echo("x")), node(echo("y", kTerminal)), end()});
  tree.addPathToTree({node(echo("x")), node(echo("z")), node(echo("w")),
                      new AutoCompleteNode(&forbidden)});
  tree.addPathToTree({node(echo("free")), node(echo("y", kTerminal)), end()});
  for (char const* line : {"x", "x ", "x y"}) {
    EXPECT_EQ(complete(line).find_first_of("xyz"), std::string::npos) << line;
  }
  EXPECT_EQ(help(""), "free");
  EXPECT_EQ(complete("free y"), "<cr>");
  forbidden.authorized = true;
  EXPECT_EQ(help(""), "x free");
  EXPECT_EQ(complete("x "), "y z");
}

TEST_F(Completion, ASubtreeIsAuthorizedOnItsOwn) {
  forbidden.authorized = false;
  tree.addPathToTree({node(echo("y")), new AutoCompleteNode(&forbidden)});
  tree.addPathToTree({node(echo("z"))});
  EXPECT_EQ(complete("q"), "z");
}

TEST_F(Completion, EachTerminalBranchAddsAReturn) {
  TestNodeSetup any = echo("any", kTerminal);
  any.accepts = "";
  any.offers = {};
  tree.addPathToTree({node(echo("x", kTerminal)), end()});
  tree.addPathToTree({node(any), end()});
  EXPECT_EQ(complete("x"), "<cr> <cr>");
  EXPECT_EQ(complete("x "), "<cr> <cr>");
}

TEST_F(Completion, TheReturnCandidateHasAllFields) {
  std::vector<AutoCompleteResult> results;
  tree.addCRtoOutput(results);
  tree.addCRtoOutput(results);
  EXPECT_EQ(QorUnit::describe(results),
            (Tokens{"2 <cr> [7 <cr>] ", "2 <cr> [7 <cr>] "}));
}

TEST_F(Completion, RemovesTheFirstCandidateWithAName) {
  struct {
    Tokens offered;
    char const* name;
    bool ignoreCase;
    char const* left;
  } const rows[] = {
      {{}, "a", false, ""},
      {{"a", "b", "a"}, "a", false, "b a"},
      {{"a", "b"}, "B", false, "a b"},
      {{"a", "b"}, "B", true, "a"},
      {{"B", "b"}, "b", false, "B"},
      {{"B", "b"}, "b", true, "b"},
      {{"abc", "ab"}, "ab", true, "abc"},
      {{"a", "b"}, "", true, "a b"},
  };
  for (auto const& row : rows) {
    std::vector<AutoCompleteResult> results;
    for (std::string const& text : row.offered) {
      results.push_back({QOR_CLI_TOKEN_WORD, text, row.name, {1, row.name}});
    }
    tree.removeOutput(results, row.name, row.ignoreCase);
    EXPECT_EQ(QorUnit::texts(results), row.left) << row.name;
  }
}

TEST_F(Completion, RemovesTheTypedWordInTheCaseOfTheNode) {
  for (bool ignoreCase : {true, false}) {
    TestNodeSetup setup = echo("filter", kTerminal);
    setup.accepts = "FILTER";
    setup.ignoreCase = ignoreCase;
    tree.deleteTree();
    tree.addPathToTree({node(setup)});
    EXPECT_EQ(complete("FILTER"), ignoreCase ? "<cr>" : "filter <cr>");
  }
}

TEST_F(Completion, RemovesAnEqualCandidateOfAnEarlierBranch) {
  TestNodeSetup other = echo("other");
  other.accepts = "none";
  other.offers = {"x"};
  tree.addPathToTree({node(other)});
  tree.addPathToTree({node(echo("x", kTerminal))});
  EXPECT_EQ(complete("x"), "x <cr>");
}

TEST_F(Completion, AMultiTokenNodeAtTheLastWord) {
  struct {
    char const* name;
    unsigned elements;
    char const* completed;
    char const* helped;
  } const rows[] = {
      {"last element typed", 1, "<cr>", "multi"},
      {"more elements to come", 2, "multi", "multi"},
      {"open-ended", 0, "multi", "multi"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    for (char const* line : {"set a", "set a "}) {
      tree.deleteTree();
      tree.addPathToTree({node(echo("set")),
                          node(multiToken("multi", row.elements)),
                          node(echo("child")), end()});
      EXPECT_EQ(complete(line), row.completed);
      tree.deleteTree();
      tree.addPathToTree({node(echo("set")),
                          node(multiToken("multi", row.elements)),
                          node(echo("child")), end()});
      calls.clear();
      EXPECT_EQ(help(line), row.helped);
      EXPECT_EQ(calls[2].substr(0, 18), "complete multi 2 '");
    }
  }
}

TEST_F(Completion, AMultiTokenNodeCompletesALastWordItRejects) {
  TestNodeSetup picky = multiToken("multi", 1);
  picky.accepts = "a";
  tree.addPathToTree({node(picky)});
  EXPECT_EQ(complete("b"), "multi");
  EXPECT_EQ(complete("b "), "");
  EXPECT_EQ(calls, (Calls{"match multi 0 completing", "complete multi 0 'last'",
                          "match multi 0 completing"}));
}

TEST_F(Completion, AMultiTokenNodeBeforeTheLastWord) {
  struct {
    char const* name;
    unsigned elements;
    char const* line;
    char const* offered;
    Calls calls;
  } const rows[] = {
      {"line ends inside",
       3,
       "a b",
       "<cr>",
       {"match multi 0 completing", "match multi 1 completing"}},
      {"open-ended",
       0,
       "a b c",
       "<cr>",
       {"match multi 0 completing", "match multi 1 completing",
        "match multi 2 completing"}},
      {"line ends with it",
       2,
       "a b",
       "multi",
       {"match multi 0 completing", "match multi 1 completing",
        "complete multi 2 'last'"}},
      {"ends before the line",
       2,
       "a b c",
       "multi",
       {"match multi 0 completing", "match multi 1 completing",
        "complete multi 2 'last'"}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    tree.deleteTree();
    tree.addPathToTree(
        {node(multiToken("multi", row.elements)), node(echo("child"))});
    calls.clear();
    EXPECT_EQ(complete(row.line), row.offered);
    EXPECT_EQ(calls, row.calls);
  }
}

TEST_F(Completion, AMultiTokenNodeThatRejectsATokenIsSkipped) {
  TestNodeSetup picky = multiToken("multi", 0);
  picky.accepts = "a";
  tree.addPathToTree({node(picky)});
  tree.addPathToTree({node(echo("a")), node(echo("next"))});
  EXPECT_EQ(complete("a b"), "next");
  EXPECT_EQ(help("a b"), "next");
}

// The status is that of the last node operation that the search keeps.
TEST_F(Completion, ReturnsTheStatusOfTheLastNode) {
  TestNodeSetup one = echo("x", kTerminal);
  one.status = 1;
  TestNodeSetup two = echo("y");
  two.status = 2;
  tree.addPathToTree({node(one)});
  help("");
  EXPECT_EQ(status, 1);
  complete("x");
  EXPECT_EQ(status, 1);
  complete("x ");
  EXPECT_EQ(status, 0);
  complete("part");
  EXPECT_EQ(status, 0);
  tree.addPathToTree({node(one), node(two)});
  complete("x");
  EXPECT_EQ(status, 2);
  TestNodeSetup multi = multiToken("multi", 2);
  multi.status = 3;
  tree.deleteTree();
  tree.addPathToTree({node(multi)});
  complete("a");
  EXPECT_EQ(status, 0);
  complete("a b");
  EXPECT_EQ(status, 0);
}

TEST_F(Completion, NothingIsRunOrReset) {
  tree.addPathToTree({node(echo("x", kTerminal)), end()});
  tree.addPathToTree({node(multiToken("multi", 1)), end()});
  for (char const* line : {"", "x", "x ", "x y"}) {
    complete(line);
    help(line);
  }
  EXPECT_TRUE(command.runs.empty());
  for (std::string const& call : calls) {
    EXPECT_NE(call.substr(0, 5), "reset");
  }
}

TEST_F(Completion, CompletesKeywords) {
  tree.addPathToTree({keyword("show", true), end()});
  tree.addPathToTree({keyword("show", true), keyword("log", true), end()});
  tree.addPathToTree({keyword("shutdown", true, true), end()});
  tree.addPathToTree({keyword("shell", true), end()});
  struct {
    char const* line;
    char const* completed;
    char const* helped;
  } const rows[] = {
      {"", "show shell", "show shell"},
      {"sh", "show shell", "show shell"},
      {"SHOW", "<cr> log", "show log"},
      {"show ", "<cr> log", "log"},
      {"show l", "log", "log"},
      {"show log", "<cr>", "log"},
      {"show x", "", ""},
      {"shutdown", "<cr>", ""},
      {"shutdown ", "<cr>", ""},
      {"shu", "", ""},
      {"x", "", ""},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(complete(row.line), row.completed) << row.line;
    EXPECT_EQ(help(row.line), row.helped) << row.line;
  }
}

TEST_F(Completion, PropagatesAnErrorOfANode) {
  struct Rejecting : TestNode {
    using TestNode::TestNode;
    int autoComplete(CliApiContext&, Tokens const&, std::string const&,
                     unsigned&, bool, bool, std::vector<AutoCompleteResult>&,
                     IOutput&) override {
      throw Error("refused", 0);
    }
  };
  tree.addPathToTree({new Rejecting(echo("x"), calls)});
  EXPECT_THROW(help(""), Error);
  EXPECT_THROW(complete("y"), Error);
  EXPECT_NO_THROW(complete("x"));
}

}  // namespace
}  // namespace QorCliUtilities
