// The trace records of operations, in order.

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <stdexcept>

#include "ACFilterOptions.h"
#include "ACKeyword.h"
#include "ACParameter.h"
#include "AutoCompleteTree.h"
#include "CliApiContext5.h"
#include "Error.h"
#include "OperationTrace.h"
#include "PipeCommand.h"
#include "PipeOutput1.h"
#include "RecordingCommand.h"
#include "RecordingContext.h"
#include "TestNode.h"
#include "Tokenizer.h"
#include "TraceLog.h"

namespace QorCliUtilities {
namespace {

using QorUnit::Calls;
using QorUnit::RecordingCommand;
using QorUnit::RecordingContext;
using QorUnit::TestNode;
using QorUnit::TestNodeSetup;
using QorUnit::TraceRecord;
using Lines = std::vector<std::string>;

QorUnit::TraceLog& traceLog() {
  static QorUnit::TraceLog log;
  return log;
}

// The progress messages of a trace.
Lines progress(Lines const& trace) {
  Lines messages;
  for (std::string const& line : trace) {
    bool const border = line.find(" >> ") != std::string::npos ||
                        line.find(" << ") != std::string::npos;
    if (!border) messages.push_back(line);
  }
  return messages;
}

// A trace without queries of nodes and of the context, which are operations of
// their own: see QueriesOfANode and TheContext.
Lines steps(Lines const& trace) {
  std::set<std::string> const questions{"doNoAddCRCompletion",
                                        "getCursor",
                                        "getMode",
                                        "helpText",
                                        "ignoreCase",
                                        "internalSpacesAllowed",
                                        "isExecutable",
                                        "isGhost",
                                        "isHidden",
                                        "isLastMultiTokenElement",
                                        "isMultiTokenNode",
                                        "isNumber",
                                        "isRoot",
                                        "isValidForMode",
                                        "keyword",
                                        "name",
                                        "potentialTerminalNode",
                                        "toShortString",
                                        "toString",
                                        "validationType"};
  Lines kept;
  for (std::string const& line : trace) {
    if (questions.count(line.substr(0, line.find(' '))) == 0) {
      kept.push_back(line);
    }
  }
  return kept;
}

// An operation, and the result in its exit record.
struct Operation {
  std::function<void()> call;
  std::string name;
  std::string result;
};

// Expects each operation to begin with its entry and to end with its exit.
void expectTraced(std::vector<Operation> const& operations) {
  for (Operation const& operation : operations) {
    operation.call();
    Lines const trace = traceLog().takeShort();
    ASSERT_GE(trace.size(), 2U) << operation.name;
    EXPECT_EQ(trace.front(), operation.name + " >> ");
    EXPECT_EQ(trace.back(), operation.name + " << " + operation.result);
  }
}

TestNodeSetup multiToken(char const* keyword, unsigned elements) {
  TestNodeSetup setup{keyword, {QOR_CLI_MODE_ANY}, true};
  setup.multiToken = true;
  setup.elements = elements;
  return setup;
}

// A command that everybody may run.
struct Open : AbstractCommand {
  using AbstractCommand::AbstractCommand;
  int execute(CliApiContext&, std::vector<std::string> const&,
              IOutput&) override {
    return 42;
  }
};

class Traced : public ::testing::Test {
 protected:
  Traced() { traceLog().take(); }

  AutoCompleteNode* node(TestNodeSetup setup) {
    return new TestNode(std::move(setup), calls);
  }

  static AutoCompleteNode* word(char const* keyword, bool terminal) {
    return new ACKeyword(keyword, "Help", {QOR_CLI_MODE_ANY}, terminal, false,
                         QorCliCompletionToken_1T{0}, false, false, false,
                         false, false);
  }

  // The trace of executing a line.
  Lines execute(char const* line) {
    traceLog().take();
    tree.executeCommand(session.context, line, &matches, output);
    return traceLog().takeShort();
  }

  Lines complete(char const* line) {
    traceLog().take();
    std::vector<AutoCompleteResult> results;
    tree.autoCompleteCommand(session.context, line, "", results, output);
    return traceLog().takeShort();
  }

  Calls calls;
  RecordingContext session;
  QorCliPipe::PipeOutput1 output;
  RecordingCommand command{"Log"};
  unsigned matches = 0;
  AutoCompleteTree tree;
};

int integer(int result) { return OperationTrace().exitWith(result); }
unsigned number(unsigned result) { return OperationTrace().exitWith(result); }
bool truth(bool result) { return OperationTrace().exitWith(result); }
char const* chars(char const* result) {
  return OperationTrace().exitWith(result);
}
std::string text(std::string result) {
  return OperationTrace().exitWith(std::move(result));
}
void nothing() { OperationTrace().exit(); }

TEST_F(Traced, ExitsIncludeTheResult) {
  EXPECT_EQ(integer(-7), -7);
  EXPECT_EQ(number(7U), 7U);
  EXPECT_TRUE(truth(true));
  EXPECT_FALSE(truth(false));
  EXPECT_STREQ(chars("%d"), "%d");
  EXPECT_EQ(text("t"), "t");
  nothing();
  EXPECT_EQ(traceLog().takeShort(),
            (Lines{"integer >> ", "integer << -7", "number >> ", "number << 7",
                   "truth >> ", "truth << true", "truth >> ", "truth << false",
                   "chars >> ", "chars << %d", "text >> ", "text << t",
                   "nothing >> ", "nothing << "}));
}

TEST_F(Traced, RecordsHaveALevelAndAnOrigin) {
  unsigned const line = __LINE__ + 1;
  integer(0);
  QOR_CLI_TRACE("progress %d", 5);
  QOR_CLI_LOG_ERROR("error %s");
  std::vector<TraceRecord> const records = traceLog().take();
  ASSERT_EQ(records.size(), 4U);
  struct {
    char const* kind;
    unsigned value;
    char const* text;
  } const rows[] = {{"level", 9, " >> "},
                    {"level", 10, " << 0"},
                    {"level", 0, "progress 5"},
                    {"severity", 4, "error %s"}};
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(records[i].kind, rows[i].kind);
    EXPECT_EQ(records[i].value, rows[i].value);
    EXPECT_EQ(records[i].text, rows[i].text);
    EXPECT_EQ(records[i].subsystem, "cli");
    EXPECT_EQ(records[i].file, "OperationTraceTest.cpp");
  }
  EXPECT_EQ(records[0].function, "integer");
  EXPECT_EQ(records[0].line, records[1].line);
  EXPECT_LT(records[0].line, line);
  EXPECT_EQ(records[2].function, "TestBody");
  EXPECT_EQ(records[2].line, line + 1);
  EXPECT_EQ(records[3].line, line + 2);
}

TEST_F(Traced, AnOperationLeftByAnExceptionHasNoExit) {
  AutoCompleteNode* const show = word("show", true);
  tree.addPathToTree({show});
  traceLog().take();
  unsigned position = 1;
  EXPECT_THROW(show->isMatch(session.context, {"show"}, position, output, true),
               Error);
  EXPECT_EQ(steps(traceLog().takeShort()), (Lines{"isMatch >> 'show' "}));
}

TEST_F(Traced, TokenizerTracesQuotedAndOtherParts) {
  std::vector<std::string> tokens;
  tree.tokenize(R"(set = "a b" , "c" x [ 1 ])", tokens, output);
  EXPECT_EQ(traceLog().takeShort(),
            (Lines{"tokenize >> ", "Found quoted string '\"a b\"' ",
                   "Non-quoted-string part of command: 'set = ' ",
                   "Modified non-quoted-string 'set=' ",
                   "Found quoted string '\"c\"' ",
                   "Non-quoted-string part of command: ' , ' ",
                   "Modified non-quoted-string ',' ",
                   "Non-quoted-string part of command: ' x [ 1 ]' ",
                   "Modified non-quoted-string ' x[1]' ", "validateToken >> ",
                   "validateToken << true", "validateToken >> ",
                   "validateToken << true", "tokenize << true"}));
}

TEST_F(Traced, TokenizerTracesNoPartsWithoutQuotes) {
  std::vector<std::string> tokens;
  tree.tokenize("a = b c", tokens, output);
  tree.tokenize("", tokens, output);
  EXPECT_EQ(traceLog().takeShort(),
            (Lines{"tokenize >> ", "validateToken >> ", "validateToken << true",
                   "validateToken >> ", "validateToken << true",
                   "tokenize << true", "tokenize >> ", "tokenize << true"}));
}

TEST_F(Traced, ExecutionFromTheLineToTheCommand) {
  Open open("Log");
  tree.addPathToTree(
      {word("set", false), word("log", true), new AutoCompleteNode(&open)});
  EXPECT_EQ(steps(execute("set log")),
            (Lines{"executeCommand >> ",
                   "tokenize >> ",
                   "validateToken >> ",
                   "validateToken << true",
                   "validateToken >> ",
                   "validateToken << true",
                   "tokenize << true",
                   "execute >> ",
                   "executeSearch >> ",
                   "There are 1 children",
                   "Checking child 0: set",
                   "isMatch >> 'set' 'log' ",
                   "isMatch << true",
                   "We found exact match node 'set'",
                   "executeSearch >> ",
                   "There are 1 children",
                   "Checking child 0: log",
                   "We are at last token.",
                   "executeValidation >> ",
                   "isMatch >> 'set' 'log' ",
                   "isMatch << true",
                   "We are checking node 'Log command'",
                   "execute >> ",
                   "isAuthorized >> ",
                   "isAuthorized >> ",
                   "isAuthorized << true",
                   "isAuthorized << true",
                   "executeVerbose >> ",
                   "setPrompt >> ",
                   "setPrompt << 0",
                   "executeVerbose << 42",
                   "execute << 42",
                   "executeValidation << 42",
                   "executeSearch << 42",
                   "executeSearch << 42",
                   "execute << 42",
                   "executeCommand << 42"}));
}

TEST_F(Traced, CompletionFromTheLineToTheCandidates) {
  tree.addPathToTree({word("show", true), word("log", true)});
  EXPECT_EQ(steps(complete("show")),
            (Lines{"autoCompleteCommand >> ",
                   "helpRequestAndAutoCompleteCommand >> ",
                   "tokenize >> ",
                   "validateToken >> ",
                   "validateToken << true",
                   "tokenize << true",
                   "autocomplete >> ",
                   "autocompleteSearch >> ",
                   "There are 1 children",
                   "Checking child 0: show",
                   "isCommandAuthorized >> ",
                   "isAuthorized >> ",
                   "isAuthorized << true",
                   "isCommandAuthorized >> ",
                   "isAuthorized >> ",
                   "isAuthorized << true",
                   "isCommandAuthorized << 1",
                   "isCommandAuthorized << 1",
                   "autocompleteValidation >> ",
                   "isMatch >> 'show' ",
                   "isMatch << true",
                   "We found last token exact matches node 'show' ",
                   "autoComplete >> ",
                   "extractToken >> ",
                   "extractToken << show",
                   "match >> ",
                   "match << true",
                   "addPossibility >> ",
                   "addPossibility << ",
                   "autoComplete << 0",
                   "removeOutput >> ",
                   "removeOutput << ",
                   "addCRtoOutput >> ",
                   "addCRtoOutput << ",
                   "We are checking node 'log'",
                   "We will autocomplete for node 'log'",
                   "autoComplete >> ",
                   "extractToken >> ",
                   "extractToken << ",
                   "match >> ",
                   "match << true",
                   "addPossibility >> ",
                   "addPossibility << ",
                   "autoComplete << 0",
                   "autocompleteValidation << 0",
                   "autocompleteSearch << 0",
                   "autocomplete << 0",
                   "helpRequestAndAutoCompleteCommand << 0",
                   "autoCompleteCommand << 0"}));
}

TEST_F(Traced, HelpIsAnOperationOfItsOwn) {
  std::vector<AutoCompleteResult> results;
  tree.helpRequest(session.context, "a\"b\"", results, output);
  EXPECT_EQ(
      traceLog().takeShort(),
      (Lines{"helpRequest >> ", "helpRequestAndAutoCompleteCommand >> ",
             "tokenize >> ", "Found quoted string '\"b\"' ",
             "Non-quoted-string part of command: 'a' ",
             "Modified non-quoted-string 'a' ", "validateToken >> ",
             "validateToken << false", "tokenize << false",
             "helpRequestAndAutoCompleteCommand << -1", "helpRequest << -1"}));
}

TEST_F(Traced, ExecutionOfAGreedyNode) {
  TestNodeSetup greedy{"all"};
  greedy.swallows = 99;
  tree.addPathToTree({node(greedy), node({"plain"})});
  EXPECT_EQ(
      progress(execute("a b")),
      (Lines{"There are 1 children", "Checking child 0: all",
             "We found exact match node 'node all'",
             "We found exact match node position = 2", "There are 1 children",
             "Checking child 0: plain", "We are at last token."}));
}

TEST_F(Traced, ExecutionOfAMultiTokenNode) {
  tree.addPathToTree({node(multiToken("MultiParms", 0)), node({"plain"}),
                      new AutoCompleteNode(&command)});
  tree.addPathToTree({node(multiToken("pair", 3))});
  EXPECT_EQ(
      progress(execute("a b")),
      (Lines{"There are 2 children", "Checking child 0: MultiParms",
             "We found multi token node.", "We are checking node 'node plain'",
             "Checking child 1: pair", "We found multi token node."}));
}

TEST_F(Traced, ExecutionWithoutACommand) {
  AutoCompleteNode empty(nullptr);
  empty.execute(session.context, {}, output);
  EXPECT_EQ(steps(traceLog().takeShort()),
            (Lines{"execute >> ", "Attempt to execute invalid node 'Root'",
                   "execute << -1"}));
  command.authorized = false;
  AutoCompleteNode(&command).execute(session.context, {}, output);
  EXPECT_EQ(
      steps(traceLog().takeShort()),
      (Lines{"execute >> ", "isAuthorized >> ", "isAuthorized << false",
             "push_back >> ", "push_back << ",
             "Authorization failed for node 'Log command'", "execute << -1"}));
}

TEST_F(Traced, CompletionDescendsIntoMatchedNodes) {
  TestNodeSetup other{"other"};
  other.modes = {7};
  tree.addPathToTree({node({"x"}), node({"y"}), node({"z"})});
  tree.addPathToTree({node({"x"}), node({"y"}), node(other)});
  EXPECT_EQ(progress(complete("a b")),
            (Lines{"There are 1 children", "Checking child 0: x",
                   "We found exact match node 'node x' ",
                   "There are 1 children", "Checking child 0: y",
                   "We found last token exact matches node 'node y' ",
                   "We are checking node 'node z'",
                   "We will autocomplete for node 'node z'",
                   "We are checking node 'node other'"}));
}

TEST_F(Traced, CompletionOfAMultiTokenNode) {
  tree.addPathToTree({node(multiToken("multi", 3))});
  EXPECT_EQ(progress(complete("a b")),
            (Lines{"There are 1 children", "Checking child 0: multi",
                   "We found multi token node.", "current position is 2"}));
  tree.deleteTree();
  tree.addPathToTree({node({"set"}), node(multiToken("multi", 1))});
  EXPECT_EQ(progress(complete("set a")),
            (Lines{"There are 1 children", "Checking child 0: set",
                   "We found exact match node 'node set' ",
                   "There are 1 children", "Checking child 0: multi",
                   "We found last token exact matches node 'node multi' ",
                   "We found multi token node.", "currentPosition is 2"}));
  tree.deleteTree();
  tree.addPathToTree({node(multiToken("multi", 1))});
  EXPECT_EQ(progress(complete("a b")),
            (Lines{"There are 1 children", "Checking child 0: multi",
                   "We found multi token node."}));
}

TEST_F(Traced, AWordTooLongToMatchIsNotTraced) {
  AutoCompleteNode::match("fil", "filter");
  EXPECT_EQ(traceLog().takeShort(), Lines{});
  AutoCompleteNode::match("filter", "x");
  EXPECT_EQ(traceLog().takeShort().back(), "match << false");
}

TEST_F(Traced, BuildingAndDeletingATree) {
  tree.addPathToTree({node({"x"})});
  EXPECT_EQ(steps(traceLog().takeShort()),
            (Lines{"addPathToTree >> ", "addSubPathToTree >> ",
                   "addSubPathToTree << 0", "addPathToTree << 0"}));
  tree.addPathToTree({node({"x"}), node({"y"})});
  EXPECT_EQ(steps(traceLog().takeShort()),
            (Lines{"addPathToTree >> ", "findChildNode >> ",
                   "findChildNode << ", "unsetHidden >> ", "unsetHidden << ",
                   "addState >> ", "addState << ", "findChildNode >> ",
                   "findChildNode << ", "addSubPathToTree >> ",
                   "addSubPathToTree << 0", "addPathToTree << 0"}));
}

TEST_F(Traced, QueriesOfANode) {
  command.authorized = true;
  AutoCompleteNode end(&command);
  CliApiContext& context = session.context;
  expectTraced({
      {[&] { end.keyword(); }, "keyword", "Log command"},
      {[&] { end.toString(); }, "toString", "Log command"},
      {[&] { end.toShortString(); }, "toShortString", "Log command"},
      {[&] { end.isMultiTokenNode(); }, "isMultiTokenNode", "false"},
      {[&] { end.isLastMultiTokenElement(context); }, "isLastMultiTokenElement",
       "false"},
      {[&] { end.resetNode(context); }, "resetNode", ""},
      {[&] { end.ignoreCase(); }, "ignoreCase", "false"},
      {[&] { end.internalSpacesAllowed(); }, "internalSpacesAllowed", "false"},
      {[&] { end.doNoAddCRCompletion(context, {}); }, "doNoAddCRCompletion",
       "false"},
      {[&] { end.isValidForMode(QorCliModeEnum_1T{7}); }, "isValidForMode",
       "false"},
      {[&] { AutoCompleteNode(nullptr).isRoot(); }, "isRoot", "true"},
      {[&] { end.isExecutable(); }, "isExecutable", "true"},
      {[&] { end.isHidden(); }, "isHidden", "false"},
      {[&] { end.unsetHidden(); }, "unsetHidden", ""},
      {[&] { end.potentialTerminalNode(); }, "potentialTerminalNode", "false"},
      {[&] { end.setPotentialTerminalNode(true); }, "setPotentialTerminalNode",
       ""},
      {[&] { end.setValidationType(Validation_Type{-2}); }, "setValidationType",
       ""},
      {[&] { end.validationType(); }, "validationType", "-2"},
      {[&] { end.isAuthorized(context); }, "isAuthorized", "true"},
      {[&] { command.name(); }, "name", "Log"},
  });
}

TEST_F(Traced, QueriesOfOtherNodesAndTheTree) {
  ACKeyword const keyword("Show", "Help", {}, true, true,
                          QorCliCompletionToken_1T{0}, false, false, false,
                          false, false);
  QorCliPipe::ACFilterOptions const options({}, VALIDATION_NONE, true);
  ACParameter const parameter(Parameter::text("<word>", "Help"), true);
  expectTraced({
      {[&] { keyword.keyword(); }, "keyword", "show"},
      {[&] { keyword.toString(); }, "toString", "show"},
      {[&] { keyword.toShortString(); }, "toShortString", "show"},
      {[&] { keyword.ignoreCase(); }, "ignoreCase", "true"},
      {[&] { keyword.isHidden(); }, "isHidden", "true"},
      {[&] { keyword.helpText(QorCliModeEnum_1T{7}); }, "helpText", "Help"},
      {[&] { ACKeyword::isGhost(""); }, "isGhost", "true"},
      {[&] { parameter.ignoreCase(); }, "ignoreCase", "true"},
      {[&] { parameter.toShortString(); }, "toShortString", "<word>"},
      {[&] { options.isMultiTokenNode(); }, "isMultiTokenNode", "true"},
      {[&] { options.toShortString(); }, "toShortString", "MultiParms"},
      {[&] { QorCliPipe::ACFilterOptions::isNumber("x"); }, "isNumber",
       "false"},
      {[&] { tree.readyForUse(); }, "readyForUse", "false"},
      {[&] { tree.getRoot(); }, "getRoot", ""},
      {[&] { statefreeRegex("(a)"); }, "statefreeRegex", "(?:a)"},
  });
}

// A record without functions.
QorCliApiContext_5 quietRecord() {
  QorCliApiContext_5 record{};
  record.sessionId = 4294967295U;
  record.transactionHandle = 12;
  record.loginName = "eva";
  record.mode = QorCliModeEnum_1T{7};
  record.prompt = "> ";
  record.timeout = 60;
  record.authorisationHandle = 18446744073709551615U;
  record.lastStatus = -3;
  return record;
}

TEST_F(Traced, TheContext) {
  QorCliApiContext_5 record = quietRecord();
  CliApiContext5 context(&record);
  CliApiContext5 const& constant = context;
  expectTraced({
      {[&] { context.get_v5(); }, "get_v5", ""},
      {[&] { constant.get_v5(); }, "get_v5", ""},
      {[&] { context.get_v6(); }, "get_v6", ""},
      {[&] { constant.get_v7(); }, "get_v7", ""},
      {[&] { context.get_v8(); }, "get_v8", ""},
      {[&] { static_cast<void>(static_cast<bool>(context)); }, "operator bool",
       "true"},
      {[&] { context.setActionId(9); }, "setActionId", ""},
      {[&] { context.getActionId(); }, "getActionId", "9"},
      {[&] { context.setCursor(""); }, "setCursor", "-1"},
      {[&] { context.getPrompt(); }, "getPrompt", "> "},
      {[&] { context.setPrompt(); }, "setPrompt", "-1"},
      {[&] { context.setPromptString("x"); }, "setPromptString", ""},
      {[&] { context.setOutput(0, 1, 2, "x"); }, "setOutput", "-1"},
      {[&] {
         context.setAutocompleteResult(0, 1, 2, QOR_CLI_TOKEN_WORD, "", "");
       },
       "setAutocompleteResult", "-1"},
      {[&] { context.sessionShutdown(0); }, "sessionShutdown", "-1"},
      {[&] {
         context.setSortableAutocompleteResult(0, 1, 2, QOR_CLI_TOKEN_WORD, "",
                                               "", QOR_CLI_SORT_LAST, "");
       },
       "setSortableAutocompleteResult", "-1"},
  });
}

TEST_F(Traced, TheContextsData) {
  QorCliApiContext_5 record = quietRecord();
  CliApiContext5 context(&record);
  expectTraced({
      {[&] { context.getSessionId(); }, "getSessionId", "4294967295"},
      {[&] { context.getTxHandle(); }, "getTxHandle", "12"},
      {[&] { context.setTxHandle(13); }, "setTxHandle", ""},
      {[&] { context.getMode(); }, "getMode", "7"},
      {[&] { context.setMode(QorCliModeEnum_1T{8}); }, "setMode", ""},
      {[&] { context.getLoginName(); }, "getLoginName", "eva"},
      {[&] { context.getCursor(); }, "getCursor", "(null)"},
      {[&] { context.getAuthHandle(); }, "getAuthHandle",
       "18446744073709551615"},
      {[&] { context.getTimeout(); }, "getTimeout", "60"},
      {[&] { context.getExclusiveUse(); }, "getExclusiveUse", "false"},
      {[&] { context.setExclusiveUse(true); }, "setExclusiveUse", ""},
      {[&] { context.getLock(); }, "getLock", "0"},
      {[&] { context.setLock(QOR_CLI_LOCK_NONE); }, "setLock", "-1"},
      {[&] { context.clone(); }, "clone", ""},
      {[&] { context.getLastStatus(); }, "getLastStatus", "-3"},
      {[&] { context.setLastStatus(0); }, "setLastStatus", ""},
  });
}

TEST_F(Traced, AContextWithoutTheOperation) {
  QorCliApiContext_5 record = quietRecord();
  CliApiContext5 context(&record);
  EXPECT_THROW(context.printHistory(0, 1), std::runtime_error);
  EXPECT_EQ(traceLog().takeShort(), Lines{"printHistory >> "});
}

TEST_F(Traced, TheSink) {
  output.push_back("a");
  output.push_back(Lines{"b"});
  output.getOutput();
  output.clear();
  EXPECT_EQ(
      traceLog().takeShort(),
      (Lines{"push_back >> ", "push_back << ", "push_back >> ", "push_back << ",
             "getOutput >> ", "getOutput << ", "clear >> ", "clear << "}));
}

TEST_F(Traced, FilterOptionsTraceOnlyEntryAndExit) {
  QorCliPipe::ACFilterOptions options({QOR_CLI_MODE_ANY}, VALIDATION_NONE,
                                      true);
  unsigned position = 1;
  options.isMatch(session.context, {"filter", "-i"}, position, output, true);
  EXPECT_EQ(steps(traceLog().takeShort()),
            (Lines{"isMatch >> ", "isMatch << true"}));
  std::vector<AutoCompleteResult> results;
  options.autoComplete(session.context, {"filter", "--xyz"}, "", position, true,
                       false, results, output);
  EXPECT_EQ(steps(traceLog().takeShort()),
            (Lines{"autoComplete >> ", "autoComplete << -1"}));
  options.autoComplete(session.context, {"filter", "--af"}, "", position, true,
                       false, results, output);
  EXPECT_EQ(steps(traceLog().takeShort()),
            (Lines{"autoComplete >> ", "addPossibility >> ",
                   "addPossibility << ", "autoComplete << 0"}));
}

TEST_F(Traced, AParameterTracesOnlyEntryAndExit) {
  ACParameter node(Parameter::number("<n>", "Help"), true);
  unsigned position = 0;
  node.isMatch(session.context, {"x"}, position, output, true);
  EXPECT_EQ(steps(traceLog().takeShort()),
            (Lines{"isMatch >> ", "isMatch << false"}));
  std::vector<AutoCompleteResult> results;
  node.autoComplete(session.context, {"x"}, "", position, true, false, results,
                    output);
  EXPECT_EQ(
      steps(traceLog().takeShort()),
      (Lines{"autoComplete >> ", "extractToken >> ", "extractToken << ",
             "addPossibility >> ", "addPossibility << ", "autoComplete << 0"}));
}

class Nothing : public TextProcessor {
 public:
  static CommandSyntax syntax() { return {"nothing", "Print nothing"}; }
  explicit Nothing(Arguments const&) {}
  void text(std::string_view, Printer&) override {}
};

TEST_F(Traced, ACommandOfProcessors) {
  auto const nothing = makePipeCommand<Nothing>();
  auto const outer = [](Lines const& all) {
    Lines found;
    for (std::string const& line : all) {
      for (char const* name :
           {"addTo ", "execute ", "complete ", "forgetRuns "}) {
        if (line.rfind(name, 0) == 0) found.push_back(line);
      }
    }
    return found;
  };
  nothing->addTo(tree);
  output.push_back("a\n");
  nothing->execute(session.context, {"nothing"}, output);
  nothing->execute(session.context, {"nothing", "x"}, output);
  nothing->complete(0, output);
  nothing->forgetRuns();
  EXPECT_EQ(outer(traceLog().takeShort()),
            (Lines{"addTo >> ", "addTo << ", "execute >> ", "execute << 0",
                   "execute >> ", "execute << 0", "complete >> ",
                   "complete << 0", "forgetRuns >> ", "forgetRuns << "}));
}

TEST_F(Traced, RecordsNameTheirSourceFile) {
  tree.addPathToTree({word("show", true), new AutoCompleteNode(&command)});
  traceLog().take();
  tree.executeCommand(session.context, "show", &matches, output);
  std::map<std::string, std::string> const files{
      {"executeCommand", "AutoCompleteTreeExecution.cpp"},
      {"tokenize", "Tokenizer.cpp"},
      {"isMatch", "ACKeyword.cpp"},
      {"executeVerbose", "AbstractCommand.cpp"}};
  std::size_t seen = 0;
  for (TraceRecord const& record : traceLog().take()) {
    EXPECT_GT(record.line, 0U);
    auto const expected = files.find(record.function);
    if (expected == files.end()) continue;
    EXPECT_EQ(record.file, expected->second) << record.function;
    ++seen;
  }
  EXPECT_GE(seen, 2 * files.size());
}

}  // namespace
}  // namespace QorCliUtilities

int main(int argc, char** argv) {
  QorCliUtilities::traceLog();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
