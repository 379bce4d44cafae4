#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <string>

#include "PluginTest.h"

namespace qor_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned kActionId = 4294967295U;

// Calls by an engine that omits arguments or passes invalid ones.
class ActionBorder : public PluginTest {
 protected:
  void expectNothingCalled() {
    EXPECT_THAT(session.outputs, IsEmpty());
    EXPECT_THAT(session.candidates, IsEmpty());
    EXPECT_THAT(session.otherCalls, IsEmpty());
  }

  unsigned matches = 0;
};

TEST_F(ActionBorder, ANullRecordIsRejected) {
  for (unsigned const action : {1U, kExecute, kComplete, kHelp}) {
    EXPECT_EQ(-1, interface->useModule(nullptr, action, kActionId, &matches,
                                       "filter a", "a\n"));
  }
  EXPECT_EQ(0U, matches);
}

TEST_F(ActionBorder, ANullMatchCounterIsRejected) {
  for (unsigned const action : {1U, kExecute, kComplete, kHelp}) {
    EXPECT_EQ(-1, interface->useModule(&session.record, action, kActionId,
                                       nullptr, "filter a", "a\n"));
  }
  expectNothingCalled();
}

TEST_F(ActionBorder, InputCompleteOfANullRecordIsRejectedAndClearsNothing) {
  use(kExecute, kActionId, "filter -b 1 M", "x\n");
  EXPECT_EQ(-1, interface->inputComplete(nullptr, kActionId));
  use(kExecute, kActionId, "filter -b 1 M", "M\n");
  EXPECT_THAT(textsOf(session.outputs), ElementsAre("x\n", "M\n"));
}

TEST_F(ActionBorder, ANullCommandLineIsAnEmptyOne) {
  EXPECT_EQ(0, interface->useModule(&session.record, kExecute, kActionId,
                                    &matches, nullptr, "a\n"));
  EXPECT_EQ(0U, matches);
  expectNothingCalled();
  for (unsigned const action : {kComplete, kHelp}) {
    session.clear();
    EXPECT_EQ(0, interface->useModule(&session.record, action, kActionId,
                                      &matches, nullptr, nullptr));
    ASSERT_EQ(1U, session.candidates.size());
    EXPECT_EQ("filter", session.candidates[0].completion);
  }
}

TEST_F(ActionBorder, ANullInputIsAnEmptyOne) {
  EXPECT_EQ(0, interface->useModule(&session.record, kExecute, kActionId,
                                    &matches, "filter -v a", nullptr));
  EXPECT_EQ(1U, matches);
  expectNothingCalled();
}

TEST_F(ActionBorder, OtherActionsDoNothing) {
  for (unsigned const action : {0U, 1U, 5U, 6U, 4294967295U}) {
    EXPECT_EQ(0, use(action, kActionId, "filter a", "a\n").status) << action;
    EXPECT_EQ(0U, use(action, kActionId, "filter a", "a\n").commandMatchCount);
    matches = 1;
    EXPECT_EQ(0, interface->useModule(&session.record, action, kActionId,
                                      &matches, "filter a", "a\n"));
    EXPECT_EQ(1U, matches);
  }
  expectNothingCalled();
}

TEST_F(ActionBorder, TheMatchCounterIsIncremented) {
  matches = 5;
  EXPECT_EQ(0, interface->useModule(&session.record, kExecute, kActionId,
                                    &matches, "filter a", "a\n"));
  EXPECT_EQ(6U, matches);
}

TEST_F(ActionBorder, AnEarlierMatchShowsTheInputOfALineThatRunsNothing) {
  matches = 1;
  EXPECT_EQ(0, interface->useModule(&session.record, kExecute, kActionId,
                                    &matches, "nothing", "a\nb\n"));
  EXPECT_EQ(1U, matches);
  EXPECT_THAT(session.outputs,
              ElementsAre(OutputCall{0, 1, kActionId, "a\nb\n"}));
}

TEST_F(ActionBorder, AnEmptyOutputIsNotShown) {
  matches = 1;
  EXPECT_EQ(0, interface->useModule(&session.record, kExecute, kActionId,
                                    &matches, "nothing", ""));
  expectNothingCalled();
}

TEST_F(ActionBorder, CandidatesAreNotOutput) {
  matches = 1;
  EXPECT_EQ(0, interface->useModule(&session.record, kComplete, kActionId,
                                    &matches, "fil", "a\n"));
  EXPECT_EQ(1U, session.candidates.size());
  EXPECT_THAT(session.outputs, IsEmpty());
}

TEST_F(ActionBorder, AMissingOutputFunctionDoesNotChangeTheStatus) {
  session.record.setOutput = nullptr;
  session.record.setSortableAutocompleteResult = nullptr;
  EXPECT_EQ(0, use(kExecute, kActionId, "filter a", "a\n").status);
  EXPECT_EQ(-1, use(kExecute, kActionId, "filter -i", "a\n").status);
  EXPECT_EQ(0, use(kComplete, kActionId, "filter ").status);
  EXPECT_EQ(0, use(kHelp, kActionId, "filter ").status);
  expectNothingCalled();
}

TEST_F(ActionBorder, OutputContinuesAfterAFailure) {
  static unsigned answered;
  answered = 0;
  session.record.setOutput = [](ContextRecord*, unsigned, unsigned, unsigned,
                                char const*) -> std::int32_t {
    ++answered;
    return -1;
  };
  EXPECT_EQ(0, use(kExecute, kActionId, "filter a", "a\nab\nac\n").status);
  EXPECT_EQ(3U, answered);
}

TEST_F(ActionBorder, CandidatesContinueAfterAFailure) {
  static unsigned answered;
  answered = 0;
  session.record.setSortableAutocompleteResult =
      [](ContextRecord*, unsigned, unsigned, unsigned, unsigned, char const*,
         char const*, unsigned, char const*) -> std::int32_t {
    ++answered;
    return -1;
  };
  EXPECT_EQ(0, use(kComplete, kActionId, "filter ").status);
  EXPECT_EQ(9U, answered);
}

TEST_F(ActionBorder, ASessionWithoutAPromptThrows) {
  session.record.setPrompt = nullptr;
  try {
    interface->useModule(&session.record, kExecute, kActionId, &matches,
                         "filter a", "a\n");
    FAIL() << "no exception";
  } catch (std::exception const& error) {
    EXPECT_STREQ("Unable to set prompt", error.what());
  }
  EXPECT_EQ(1U, matches);
  expectNothingCalled();
}

TEST_F(ActionBorder, APromptIsNotNeededIfNothingRuns) {
  session.record.setPrompt = nullptr;
  EXPECT_EQ(0, use(kExecute, kActionId, "nothing", "a\n").status);
  EXPECT_EQ(0, use(kComplete, kActionId, "filter ").status);
}

TEST_F(ActionBorder, TheRecordIsUnchanged) {
  session.record.sessionId = 1;
  session.record.transactionHandle = 2;
  session.record.timeout = 3;
  session.record.lastStatus = 4;
  session.record.lock = 5;
  session.record.exclusiveUse = 1;
  use(kExecute, kActionId, "filter a", "a\n");
  use(kExecute, kActionId, "filter -i", "a\n");
  use(kComplete, kActionId, "filter ");
  EXPECT_EQ(1U, session.record.sessionId);
  EXPECT_EQ(2U, session.record.transactionHandle);
  EXPECT_EQ(1U, session.record.mode);
  EXPECT_EQ(3U, session.record.timeout);
  EXPECT_EQ(4, session.record.lastStatus);
  EXPECT_EQ(5U, session.record.lock);
  EXPECT_EQ(1U, session.record.exclusiveUse);
}

TEST_F(ActionBorder, EveryModeRunsTheFilter) {
  for (unsigned const mode : {0U, 1U, 2U, 65535U, 4294967295U}) {
    session.record.mode = mode;
    EXPECT_EQ(1U, use(kExecute, kActionId, "filter a", "a\n").commandMatchCount)
        << mode;
  }
}

}  // namespace
}  // namespace qor_test
