#include <gtest/gtest.h>

#include <functional>

#include "AutoCompleteNode.h"
#include "Candidates.h"
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

constexpr QorCliModeEnum_1T kModes[] = {QorCliModeEnum_1T{0}, QOR_CLI_MODE_EXEC,
                                        QorCliModeEnum_1T{2}, QOR_CLI_MODE_ANY,
                                        QorCliModeEnum_1T{4294967295U}};

TEST(AutoCompleteNode, ANodeWithoutACommandIsARoot) {
  AutoCompleteNode const root(nullptr);
  EXPECT_EQ(root.toString(), "Root");
  EXPECT_EQ(root.toShortString(), "Root");
  EXPECT_EQ(root.keyword(), "Root");
  EXPECT_TRUE(root.isRoot());
  EXPECT_FALSE(root.isExecutable());
}

TEST(AutoCompleteNode, ACommandNodeIsNamedAfterItsCommand) {
  RecordingCommand command("filter");
  AutoCompleteNode const node(&command);
  EXPECT_EQ(node.toString(), "filter command");
  EXPECT_EQ(node.toShortString(), "filter command");
  EXPECT_EQ(node.keyword(), "filter command");
  EXPECT_FALSE(node.isRoot());
  EXPECT_TRUE(node.isExecutable());
}

TEST(AutoCompleteNode, StartsWithTheConstructorArguments) {
  RecordingCommand command("c");
  AutoCompleteNode const end(&command);
  EXPECT_FALSE(end.potentialTerminalNode());
  EXPECT_FALSE(end.isHidden());
  EXPECT_EQ(end.validationType(), VALIDATION_NONE);
  EXPECT_TRUE(end.children().empty());

  for (bool terminal : {false, true}) {
    AutoCompleteNode const node({1}, Validation_Type{7}, terminal, !terminal);
    EXPECT_EQ(node.potentialTerminalNode(), terminal);
    EXPECT_EQ(node.isHidden(), !terminal);
    EXPECT_EQ(node.validationType(), Validation_Type{7});
    EXPECT_FALSE(node.isExecutable());
    EXPECT_TRUE(node.children().empty());
  }
}

TEST(AutoCompleteNode, BaseOperationsDoNothing) {
  RecordingContext session;
  QorCliPipe::PipeOutput1 output;
  std::vector<AutoCompleteResult> results;
  AutoCompleteNode node({QOR_CLI_MODE_ANY}, VALIDATION_NONE, false, false);
  unsigned position = 0;
  EXPECT_EQ(node.autoComplete(session.context, {"a"}, "a", position, true, true,
                              results, output),
            0);
  EXPECT_FALSE(node.isMatch(session.context, {"a"}, position, output, true));
  EXPECT_FALSE(node.isMultiTokenNode());
  EXPECT_FALSE(node.isLastMultiTokenElement(session.context));
  EXPECT_NO_THROW(node.resetNode(session.context));
  EXPECT_FALSE(node.ignoreCase());
  EXPECT_FALSE(node.internalSpacesAllowed());
  EXPECT_FALSE(node.doNoAddCRCompletion(session.context, {"a"}));
  EXPECT_EQ(position, 0U);
  EXPECT_TRUE(results.empty());
  EXPECT_TRUE(output.getOutput().empty());
}

TEST(AutoCompleteNode, IsValidInItsModes) {
  Calls calls;
  TestNode const everywhere({"x", {QOR_CLI_MODE_ANY}}, calls);
  TestNode const nowhere({"x", {}}, calls);
  TestNode const some({"x", {1, 2}}, calls);
  TestNode const rootByName({"Root", {}}, calls);
  TestNode const almostRoot({"root", {}}, calls);
  AutoCompleteNode const root(nullptr);
  for (QorCliModeEnum_1T mode : kModes) {
    EXPECT_TRUE(everywhere.isValidForMode(mode)) << mode;
    EXPECT_FALSE(nowhere.isValidForMode(mode)) << mode;
    EXPECT_EQ(some.isValidForMode(mode), mode == 1 || mode == 2) << mode;
    EXPECT_TRUE(root.isValidForMode(mode)) << mode;
    EXPECT_TRUE(rootByName.isValidForMode(mode)) << mode;
    EXPECT_FALSE(almostRoot.isValidForMode(mode)) << mode;
  }
  EXPECT_TRUE(rootByName.isRoot());
  EXPECT_FALSE(almostRoot.isRoot());
}

TEST(AutoCompleteNode, ACommandNodeIsValidInNoMode) {
  RecordingCommand command("c");
  for (QorCliModeEnum_1T mode : kModes) {
    EXPECT_FALSE(AutoCompleteNode(&command).isValidForMode(mode)) << mode;
  }
}

TEST(AutoCompleteNode, AddStateMergesOnlyTheModes) {
  AutoCompleteNode node({1}, VALIDATION_NONE, false, true);
  AutoCompleteNode const other({2, 3}, VALIDATION_KEYWORD, true, false);
  Calls calls;
  TestNode const otherKeyword({"x", {4}, true}, calls);
  node.addState(other);
  node.addState(otherKeyword);
  EXPECT_EQ(node.potentialTerminalNode(), false);
  EXPECT_TRUE(node.isHidden());
  EXPECT_EQ(node.validationType(), VALIDATION_NONE);

  TestNode bound({"x", {1}}, calls);
  bound.addState(other);
  for (unsigned mode = 0; mode < 5; ++mode) {
    EXPECT_EQ(bound.isValidForMode(QorCliModeEnum_1T{mode}),
              mode >= 1 && mode <= 3)
        << mode;
  }
  TestNode const unchanged({"y", {9}}, calls);
  bound.addState(unchanged);
  EXPECT_TRUE(bound.isValidForMode(QorCliModeEnum_1T{9}));
  EXPECT_FALSE(unchanged.isValidForMode(QorCliModeEnum_1T{1}));
}

TEST(AutoCompleteNode, SettersChangeTheirFlag) {
  AutoCompleteNode node({}, VALIDATION_NONE, false, true);
  node.setPotentialTerminalNode(true);
  EXPECT_TRUE(node.potentialTerminalNode());
  EXPECT_TRUE(node.isHidden());
  node.unsetHidden();
  EXPECT_FALSE(node.isHidden());
  node.setValidationType(Validation_Type{5});
  EXPECT_EQ(node.validationType(), Validation_Type{5});
  node.setPotentialTerminalNode(false);
  EXPECT_FALSE(node.potentialTerminalNode());
}

TEST(AutoCompleteNode, DoesNotDeleteItsChildren) {
  Calls calls;
  TestNode child({"child"}, calls);
  {
    TestNode parent({"parent"}, calls);
    parent.addChild(&child);
    EXPECT_EQ(parent.children(), std::vector<AutoCompleteNode*>{&child});
  }
  EXPECT_EQ(calls, Calls{"delete parent"});
}

TEST(AutoCompleteNode, CannotBeCopiedAssignedOrCompared) {
  AutoCompleteNode one(nullptr);
  AutoCompleteNode const two(nullptr);
  std::function<void()> const rows[] = {
      [&] { AutoCompleteNode const copy(two); },
      [&] { one = two; },
      [&] { static_cast<void>(one == two); },
  };
  for (auto const& row : rows) {
    expectError("Hit private code", [&] { row(); });
  }
}

TEST(AutoCompleteNode, MatchComparesPrefixesIgnoringAsciiCase) {
  struct {
    char const* candidate;
    char const* typed;
    bool matches;
  } const rows[] = {
      {"filter", "FIL", true},
      {"FILTER", "fil", true},
      {"filter", "filter", true},
      {"fil", "filter", false},
      {"x", "", true},
      {"", "", true},
      {"", "x", false},
      {"filter", "ilt", false},
      {"filter", "fix", false},
      {"a[", "A{", false},       // 0x5B and 0x7B differ by the case bit
      {"a@", "a`", false},       // so do 0x40 and 0x60
      {"\xC4x", "\xC4", true},   // non-ASCII bytes are compared verbatim,
      {"\xE4x", "\xC4", false},  // whatever they encode
  };
  for (auto const& row : rows) {
    EXPECT_EQ(AutoCompleteNode::match(row.candidate, row.typed), row.matches)
        << row.candidate << ' ' << row.typed;
  }
}

TEST(AutoCompleteNode, ExtractTokenAlwaysAdvances) {
  struct {
    Tokens tokens;
    unsigned position;
    char const* token;
  } const rows[] = {
      {{"a", "b"}, 0, "a"}, {{"a", "b"}, 1, "b"},         {{"a", "b"}, 2, ""},
      {{"a", "b"}, 3, ""},  {{"a", "b"}, 4000000000, ""}, {{}, 0, ""},
  };
  for (auto const& row : rows) {
    unsigned position = row.position;
    EXPECT_EQ(AutoCompleteNode::extractToken(row.tokens, position), row.token);
    EXPECT_EQ(position, row.position + 1);
  }
}

TEST(AutoCompleteNode, AddPossibilityAppendsEvenDuplicates) {
  std::vector<AutoCompleteResult> results;
  QorCliCompletionToken_1T const token{3};
  AutoCompleteNode::addPossibility({7, "z"}, "word", "help", token, results);
  AutoCompleteNode::addPossibility({7, "z"}, "word", "help", token, results);
  AutoCompleteNode::addPossibility({1, "a"}, "", "", token, results);
  EXPECT_EQ(QorUnit::describe(results),
            (Tokens{"3 word [7 z] help", "3 word [7 z] help", "3  [1 a] "}));
}

class Execute : public ::testing::Test {
 protected:
  RecordingContext session;
  QorCliPipe::PipeOutput1 output;
  RecordingCommand command{"c", 42};
  AutoCompleteNode node{&command};
};

TEST_F(Execute, RunsTheCommandAndSendsThePrompt) {
  command.prompt = "p>";
  EXPECT_EQ(node.execute(session.context, {"a", "b"}, output), 42);
  EXPECT_EQ(command.runs, (std::vector<Tokens>{{"a", "b"}}));
  EXPECT_EQ(session.record.calls, Calls{"setPrompt p>"});
}

TEST_F(Execute, FailsWithoutACommand) {
  AutoCompleteNode empty(nullptr);
  EXPECT_EQ(empty.execute(session.context, {"a"}, output), -1);
  EXPECT_TRUE(output.getOutput().empty());
}

TEST_F(Execute, RejectsAnUnauthorizedSession) {
  command.authorized = false;
  session.context.setPromptString("p>");
  EXPECT_EQ(node.execute(session.context, {"a"}, output), -1);
  EXPECT_EQ(output.getOutput(), Tokens{"Not allowed"});
  EXPECT_TRUE(command.runs.empty());
  EXPECT_EQ(session.record.calls, Calls{});
}

TEST_F(Execute, AsksTheCommandForAuthorization) {
  EXPECT_TRUE(node.isAuthorized(session.context));
  command.authorized = false;
  EXPECT_FALSE(node.isAuthorized(session.context));
  EXPECT_TRUE(AutoCompleteNode(nullptr).isAuthorized(session.context));
}

}  // namespace
}  // namespace QorCliUtilities
