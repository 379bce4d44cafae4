#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CommandComponent.h"
#include "RecordingContext.h"
#include "Refusal.h"

namespace QorCliUtilities {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Prints the number of lines.
class Count : public LineProcessor {
 public:
  static CommandSyntax syntax() { return {"count", "Count lines"}; }
  explicit Count(Arguments const&) {}
  void line(std::string_view, Printer&) override { ++count_; }
  void end(Printer& printer) override {
    if (count_ == 0) throw std::runtime_error("nothing to count");
    printer.line(std::to_string(count_));
  }

 private:
  unsigned count_ = 0;
};

// Prints its input.
class Copy : public TextProcessor {
 public:
  static CommandSyntax syntax() { return {"copy", "Copy lines"}; }
  explicit Copy(Arguments const&) {}
  void text(std::string_view lines, Printer& printer) override {
    printer.line(lines.substr(0, lines.size() - 1));
  }
};

struct Commands : CommandComponent<Commands, Count, Copy> {
  static constexpr char kName[] = "Commands";
};

std::vector<std::string> portalCalls;
QorReturnT registerResult = 0;
bool unregisterThrows = false;
QorMgmtSpiComponent_1* registered = nullptr;

QorMgmtSpiInterfacePortal* portal(char const*) {
  static QorMgmtSpiInterfacePortal thePortal{};
  thePortal.registerComponent = [](QorMgmtSpiComponent_1* component) {
    portalCalls.push_back("register");
    registered = component;
    return registerResult;
  };
  thePortal.unregisterComponent = [](QorMgmtSpiComponent_1*) {
    portalCalls.push_back("unregister");
    if (unregisterThrows) throw std::runtime_error("not unregistered");
    return 0;
  };
  return &thePortal;
}

}  // namespace
}  // namespace QorCliUtilities

QOR_CLI_ENTRY_POINTS(QorCliUtilities::Commands)

namespace QorCliUtilities {
namespace {

class ComponentOfCommands : public testing::Test {
 protected:
  ComponentOfCommands() {
    registerResult = 0;
    unregisterThrows = false;
    EXPECT_EQ(init(), 0);
    portalCalls.clear();
  }
  ~ComponentOfCommands() override { qorLCMterminate(); }

  static QorReturnT init() {
    QorMgmtSpiInterfacePortalAccessor accessor{portal};
    return qorLCMinit(&accessor, nullptr);
  }

  static QorCliApiPipeCommandComponent_1 const& functions() {
    return *reinterpret_cast<QorCliApiPipeCommandComponent_1 const*>(
        registered->providedInterfaces[0]);
  }

  QorReturnT use(unsigned action, char const* line, char const* input,
                 unsigned id = 7) {
    matches = 0;
    return functions().useModule(&session.record, action, id, &matches, line,
                                 input);
  }

  QorReturnT inputComplete(unsigned id = 7) {
    return functions().inputComplete(&session.record, id);
  }

  std::vector<std::string> calls() {
    return std::exchange(session.record.calls, {});
  }

  QorUnit::RecordingContext session;
  unsigned matches = 0;
};

TEST_F(ComponentOfCommands, RegistersUnderItsName) {
  EXPECT_STREQ(registered->identity.componentName, "Commands");
  EXPECT_STREQ(functions().moduleName(), "Commands");
  EXPECT_EQ(registered->start(QOR_STATE_CHANGE_NORMAL), 0);
  EXPECT_EQ(registered->stop(QOR_STATE_CHANGE_NORMAL), 0);
}

TEST_F(ComponentOfCommands, DispatchesToItsCommands) {
  EXPECT_EQ(use(QOR_CLI_ACTION_EXECUTE, "copy", "a\nb\n"), 0);
  EXPECT_EQ(matches, 1U);
  EXPECT_THAT(calls(), ElementsAre("setOutput 0 1 7 a\nb\n"));
  EXPECT_EQ(use(QOR_CLI_ACTION_EXECUTE, "paste", "a\n"), 0);
  EXPECT_EQ(matches, 0U);
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_EQ(use(QOR_CLI_ACTION_COMPLETE, "co", ""), 0);
  EXPECT_EQ(calls().size(), 2U);
  EXPECT_EQ(use(QOR_CLI_ACTION_HELP, "count ", ""), 0);
  EXPECT_THAT(calls(), ElementsAre("setSortableAutocompleteResult 0 1 7 1 <cr> "
                                   "Enter 7 <cr>"));
}

TEST_F(ComponentOfCommands, PrintsAtTheEndOfEachActionsInput) {
  use(QOR_CLI_ACTION_EXECUTE, "count", "a\nb\n", 7);
  use(QOR_CLI_ACTION_EXECUTE, "count", "a\n", 8);
  use(QOR_CLI_ACTION_EXECUTE, "copy", "a", 9);
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_EQ(inputComplete(8), 0);
  EXPECT_THAT(calls(), ElementsAre("setOutput 0 1 8 1\n"));
  use(QOR_CLI_ACTION_EXECUTE, "count", "c", 7);
  EXPECT_EQ(inputComplete(7), 0);
  EXPECT_THAT(calls(), ElementsAre("setOutput 0 1 7 3\n"));
  EXPECT_EQ(inputComplete(9), 0);
  EXPECT_THAT(calls(), ElementsAre("setOutput 0 1 9 a\n"));
  EXPECT_EQ(inputComplete(7), 0);
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(ComponentOfCommands, ReportsFailures) {
  EXPECT_EQ(use(QOR_CLI_ACTION_EXECUTE, "count x", "a\n"), -1);
  EXPECT_THAT(calls(),
              ElementsAre("setOutput 0 1 7 ERROR: Unexpected word 'x'\n"));
  use(QOR_CLI_ACTION_EXECUTE, "count", "");
  EXPECT_EQ(inputComplete(), -1);
  EXPECT_THAT(calls(),
              ElementsAre("setOutput 0 1 7 ERROR: nothing to count\n"));
}

TEST_F(ComponentOfCommands, NeverThrows) {
  EXPECT_EQ(functions().useModule(nullptr, 2, 1, &matches, "copy", ""), -1);
  EXPECT_EQ(functions().useModule(&session.record, 2, 1, nullptr, "copy", ""),
            -1);
  EXPECT_EQ(functions().inputComplete(nullptr, 1), -1);
  EXPECT_EQ(answerWithoutThrowing([]() -> QorReturnT { throw 5; }), -1);
  EXPECT_EQ(answerWithoutThrowing(
                []() -> QorReturnT { throw std::runtime_error("x"); }),
            -1);
  EXPECT_EQ(answerWithoutThrowing([] { return 3; }), 3);
}

TEST_F(ComponentOfCommands, DiscardsTheRunOfAFailedCall) {
  auto const throws = [](QorCliApiContext_5*, unsigned, unsigned, unsigned,
                         char const*) -> QorReturnT {
    throw std::runtime_error("no terminal");
  };
  auto const setOutput = std::exchange(session.record.setOutput, throws);
  use(QOR_CLI_ACTION_EXECUTE, "count", "a\n");
  EXPECT_EQ(use(QOR_CLI_ACTION_EXECUTE, "copy", "a\n"), -1);
  use(QOR_CLI_ACTION_EXECUTE, "copy", "b");
  EXPECT_EQ(inputComplete(), -1);
  session.record.setOutput = setOutput;
  EXPECT_EQ(inputComplete(), 0);
  EXPECT_THAT(calls(), IsEmpty());
  use(QOR_CLI_ACTION_EXECUTE, "copy", "c");
  EXPECT_EQ(functions().inputComplete(nullptr, 7), -1);
  EXPECT_EQ(inputComplete(), 0);
  EXPECT_THAT(calls(), IsEmpty());
}

// A command that fails does not prevent the completion of another.
TEST_F(ComponentOfCommands, CompletesEveryCommand) {
  use(QOR_CLI_ACTION_EXECUTE, "count", "a\n");
  use(QOR_CLI_ACTION_EXECUTE, "copy", "b");
  session.record.setOutput = [](QorCliApiContext_5* record, unsigned, unsigned,
                                unsigned, char const* text) -> QorReturnT {
    if (text == std::string("1\n")) throw std::runtime_error("no terminal");
    static_cast<QorUnit::RecordingRecord*>(record)->calls.emplace_back(text);
    return 0;
  };
  EXPECT_EQ(inputComplete(), -1);
  EXPECT_THAT(calls(), ElementsAre("b\n"));
}

struct CopyAgain : Copy {
  static CommandSyntax syntax() { return {"COPY", "Copy lines"}; }
  using Copy::Copy;
};

TEST(CommandSet, RejectsASecondCommandWithTheSameKeyword) {
  CommandSet commands;
  commands.add(makePipeCommand<Copy>());
  commands.add(makePipeCommand<Count>());
  QorUnit::expectError("Two commands have the keyword COPY",
                       [&] { commands.add(makePipeCommand<CopyAgain>()); });
}

TEST_F(ComponentOfCommands, AStopDiscardsRuns) {
  use(QOR_CLI_ACTION_EXECUTE, "count", "a\n");
  registered->stop(QOR_STATE_CHANGE_NORMAL);
  EXPECT_EQ(inputComplete(), 0);
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(ComponentOfCommands, LivesFromInitialisationToTermination) {
  use(QOR_CLI_ACTION_EXECUTE, "count", "a\n");
  qorLCMterminate();
  EXPECT_THAT(portalCalls, ElementsAre("unregister"));
  EXPECT_EQ(use(QOR_CLI_ACTION_EXECUTE, "copy", "a\n"), 0);
  EXPECT_EQ(matches, 0U);
  EXPECT_EQ(init(), 0);
  EXPECT_EQ(use(QOR_CLI_ACTION_EXECUTE, "copy", "a\n"), 0);
  EXPECT_EQ(matches, 1U);
  EXPECT_THAT(portalCalls, ElementsAre("unregister", "register"));
  calls();
  EXPECT_EQ(inputComplete(), 0);
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(ComponentOfCommands, TerminatesEvenIfUnregisteringFails) {
  use(QOR_CLI_ACTION_EXECUTE, "count", "a\n");
  unregisterThrows = true;
  qorLCMterminate();
  EXPECT_THAT(portalCalls, ElementsAre("unregister"));
  EXPECT_EQ(inputComplete(), 0);
  EXPECT_EQ(use(QOR_CLI_ACTION_EXECUTE, "copy", "a\n"), 0);
  EXPECT_EQ(matches, 0U);
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(ComponentOfCommands, ReturnsWhyItIsNotRegistered) {
  EXPECT_EQ(qorLCMinit(nullptr, nullptr), -1);
  registerResult = 7;
  EXPECT_EQ(init(), 7);
}

}  // namespace
}  // namespace QorCliUtilities
