#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "CliApiContext5.h"
#include "RecordingContext.h"

// The interface only declares these.
struct QorCliCompletionData_1T {};
struct QorCliPasswordPromptData_1T {};

namespace QorCliUtilities {
namespace {

using Calls = std::vector<std::string>;
using QorUnit::RecordingContext;

TEST(CliApiContext5, IsTrueOnlyOverARecord) {
  QorCliApiContext_5 record{};
  CliApiContext5 context(&record);
  CliApiContext5 const& constant = context;
  EXPECT_TRUE(context);
  EXPECT_EQ(context.get_v5(), &record);
  EXPECT_EQ(constant.get_v5(), &record);

  CliApiContext5 nothing(nullptr);
  EXPECT_FALSE(nothing);
  EXPECT_EQ(nothing.get_v5(), nullptr);
}

TEST(CliApiContext5, HasNoRecordOfALaterVersion) {
  RecordingContext session;
  CliApiContext5 const& constant = session.context;
  EXPECT_EQ(session.context.get_v6(), nullptr);
  EXPECT_EQ(session.context.get_v7(), nullptr);
  EXPECT_EQ(session.context.get_v8(), nullptr);
  EXPECT_EQ(constant.get_v6(), nullptr);
  EXPECT_EQ(constant.get_v7(), nullptr);
  EXPECT_EQ(constant.get_v8(), nullptr);
}

TEST(CliApiContext5, TheBaseHasNoRecord) {
  RecordingContext session;
  CliApiContext5 const& constant = session.context;
  EXPECT_EQ(session.context.CliApiContext::get_v5(), nullptr);
  EXPECT_EQ(constant.CliApiContext::get_v5(), nullptr);
}

TEST(CliApiContext5, StoresTheActionId) {
  RecordingContext session;
  EXPECT_EQ(session.context.getActionId(), 0U);
  session.context.setActionId(4294967295U);
  EXPECT_EQ(session.context.getActionId(), 4294967295U);
  CliApiContext5 other(&session.record);
  EXPECT_EQ(other.getActionId(), 0U);
}

TEST(CliApiContext5, GettersReadTheRecord) {
  RecordingContext session;
  session.record.sessionId = 11;
  session.record.transactionHandle = 12;
  session.record.loginName = "user";
  session.record.mode = QorCliModeEnum_1T{13};
  session.record.cursor = "cursor";
  session.record.prompt = "prompt";
  session.record.timeout = 14;
  session.record.unused = 15;
  session.record.authorisationHandle = 0x1234567890ABCDEFULL;
  session.record.exclusiveUse = true;
  session.record.lastStatus = -16;
  session.record.lock = QorCliLockEnum_1T{17};
  CliApiContext const& context = session.context;
  EXPECT_EQ(context.getSessionId(), 11U);
  EXPECT_EQ(context.getTxHandle(), 12UL);
  EXPECT_STREQ(context.getLoginName(), "user");
  EXPECT_EQ(context.getMode(), QorCliModeEnum_1T{13});
  EXPECT_STREQ(context.getCursor(), "cursor");
  EXPECT_STREQ(context.getPrompt(), "prompt");
  EXPECT_EQ(context.getTimeout(), 14U);
  EXPECT_EQ(context.getAuthHandle(), 0x1234567890ABCDEFULL);
  EXPECT_TRUE(context.getExclusiveUse());
  EXPECT_EQ(context.getLastStatus(), -16);
  EXPECT_EQ(context.getLock(), QorCliLockEnum_1T{17});
  EXPECT_EQ(session.record.calls, Calls{});
}

TEST(CliApiContext5, SettersOfMembersWriteTheRecord) {
  RecordingContext session;
  session.context.setTxHandle(21);
  session.context.setMode(QorCliModeEnum_1T{22});
  session.context.setExclusiveUse(true);
  session.context.setLastStatus(-23);
  EXPECT_EQ(session.record.transactionHandle, 21UL);
  EXPECT_EQ(session.record.mode, QorCliModeEnum_1T{22});
  EXPECT_TRUE(session.record.exclusiveUse);
  EXPECT_EQ(session.record.lastStatus, -23);
  EXPECT_EQ(session.record.calls, Calls{});
}

struct Forwarding {
  char const* call;  // as the record logs it
  std::function<QorReturnT(CliApiContext&)> operation;
  std::function<void(QorCliApiContext_5&)> remove;
};

std::vector<Forwarding> forwardings() {
  QorCliCompletionToken_1T const token{34};
  return {
      {"setCursor a=1", [](auto& c) { return c.setCursor("a=1"); },
       [](auto& r) { r.setCursor = nullptr; }},
      {"setOutput 31 32 33 text",
       [](auto& c) { return c.setOutput(31, 32, 33, "text"); },
       [](auto& r) { r.setOutput = nullptr; }},
      {"setAutocompleteResult 31 32 33 34 word help",
       [token](auto& c) {
         return c.setAutocompleteResult(31, 32, 33, token, "word", "help");
       },
       [](auto& r) { r.setAutocompleteResult = nullptr; }},
      {"sessionShutdown 35", [](auto& c) { return c.sessionShutdown(35); },
       [](auto& r) { r.sessionShutdown = nullptr; }},
      {"setSortableAutocompleteResult 31 32 33 34 word help 36 key",
       [token](auto& c) {
         return c.setSortableAutocompleteResult(
             31, 32, 33, token, "word", "help", QorCliSortOrderEnum_3T{36},
             "key");
       },
       [](auto& r) { r.setSortableAutocompleteResult = nullptr; }},
      {"setLock 37", [](auto& c) { return c.setLock(QorCliLockEnum_1T{37}); },
       [](auto& r) { r.setLock = nullptr; }},
  };
}

TEST(CliApiContext5, ForwardsToTheFunctionsOfTheRecord) {
  for (Forwarding const& row : forwardings()) {
    RecordingContext session;
    session.record.result = 38;
    EXPECT_EQ(row.operation(session.context), 38);
    EXPECT_EQ(session.record.calls, Calls{row.call});
  }
}

TEST(CliApiContext5, FailsIfTheRecordLacksTheFunction) {
  for (Forwarding const& row : forwardings()) {
    RecordingContext session;
    row.remove(session.record);
    EXPECT_EQ(row.operation(session.context), -1) << row.call;
    EXPECT_EQ(session.record.calls, Calls{});
  }
}

TEST(CliApiContext5, SetLockDoesNotWriteTheMember) {
  RecordingContext session;
  session.context.setLock(QOR_CLI_LOCK_EXCLUSIVE);
  EXPECT_EQ(session.context.getLock(), QOR_CLI_LOCK_NONE);
}

TEST(CliApiContext5, SendsOnlyAPendingPrompt) {
  RecordingContext session;
  EXPECT_EQ(session.context.setPrompt(), 0);
  EXPECT_EQ(session.record.calls, Calls{});
  session.context.setPromptString("a>");
  EXPECT_EQ(session.record.calls, Calls{});
  EXPECT_EQ(session.context.setPrompt(), 0);
  EXPECT_EQ(session.context.setPrompt(), 0);
  EXPECT_EQ(session.record.calls, Calls{"setPrompt a>"});
}

TEST(CliApiContext5, RetriesAPromptThatWasNotSent) {
  RecordingContext session;
  session.context.setPromptString("a>");
  session.record.result = 9;
  EXPECT_EQ(session.context.setPrompt(), 9);
  EXPECT_EQ(session.context.setPrompt(), 9);
  session.record.result = 0;
  EXPECT_EQ(session.context.setPrompt(), 0);
  EXPECT_EQ(session.context.setPrompt(), 0);
  EXPECT_EQ(session.record.calls,
            (Calls{"setPrompt a>", "setPrompt a>", "setPrompt a>"}));
}

TEST(CliApiContext5, KeepsACopyOfTheLatestPrompt) {
  RecordingContext session;
  std::string text = "first";
  session.context.setPromptString(text.c_str());
  text = "second";
  session.context.setPromptString(text.c_str());
  text = "other.";
  session.context.setPrompt();
  session.context.setPromptString("");
  session.context.setPrompt();
  session.context.setPromptString(nullptr);
  session.context.setPrompt();
  EXPECT_EQ(session.record.calls,
            (Calls{"setPrompt second", "setPrompt ", "setPrompt "}));
}

TEST(CliApiContext5, FailsIfTheRecordCannotSetAPrompt) {
  RecordingContext session;
  auto const function = session.record.setPrompt;
  session.record.setPrompt = nullptr;
  EXPECT_EQ(session.context.setPrompt(), -1);
  session.context.setPromptString("a>");
  EXPECT_EQ(session.context.setPrompt(), -1);
  session.record.setPrompt = function;
  EXPECT_EQ(session.context.setPrompt(), 0);
  EXPECT_EQ(session.record.calls, Calls{"setPrompt a>"});
}

TEST(CliApiContext5, ACloneHasTheActionIdAndNoPrompt) {
  RecordingContext session;
  session.context.setActionId(9);
  session.context.setPromptString("a>");
  Poco::SharedPtr<CliApiContext> clone = session.context.clone();
  EXPECT_EQ(clone.referenceCount(), 1);
  EXPECT_EQ(clone->get_v5(), &session.record);
  EXPECT_EQ(clone->getActionId(), 9U);
  EXPECT_EQ(clone->setPrompt(), 0);
  EXPECT_EQ(session.record.calls, Calls{});
  clone->setActionId(10);
  EXPECT_EQ(session.context.getActionId(), 9U);
  EXPECT_EQ(session.context.setPrompt(), 0);
  EXPECT_EQ(session.record.calls, Calls{"setPrompt a>"});
}

TEST(CliApiContext5, ACloneOverNoRecordIsFalse) {
  CliApiContext5 const nothing(nullptr);
  EXPECT_FALSE(*nothing.clone());
}

TEST(CliApiContext5, OperationsOfLaterVersionsThrowTheirOwnText) {
  RecordingContext session;
  CliApiContext& c = session.context;
  std::vector<CliApiContext::SessionProperty> properties;
  QorCliCompletionData_1T const data;
  QorCliPasswordPromptData_1T const prompt;
  struct {
    char const* text;
    std::function<void()> operation;
  } const rows[] = {
      {"getSessionProperties() is not implemented for this version of CLI API "
       "context!",
       [&] { c.getSessionProperties(1, properties); }},
      {"setSessionProperties() is not implemented for this version of CLI API "
       "context!",
       [&] { c.setSessionProperties(1, properties); }},
      {"printHistory() is not implemented for this version of CLI API context!",
       [&] { c.printHistory(1, 2); }},
      {"setCompletionAndPrompt() is not implemented for this version of CLI "
       "API context!",
       [&] { c.setCompletionAndPrompt(1, data, prompt); }},
      {"setCompletion() is not implemented for this version of CLI API "
       "context!",
       [&] { c.setCompletion(1, data); }},
      {"setConditionalOutput() is not implemented for this version of CLI API "
       "context!",
       [&] { c.setConditionalOutput(0, 1, 2, "text"); }},
      {"setPartialLineOutput() is not implemented for this version of CLI API "
       "context!",
       [&] { c.setPartialLineOutput(0, 1, 2, "text"); }},
  };
  for (auto const& row : rows) {
    try {
      row.operation();
      FAIL() << row.text;
    } catch (std::runtime_error const& error) {
      EXPECT_STREQ(error.what(), row.text);
    }
  }
  EXPECT_EQ(session.record.calls, Calls{});
}

}  // namespace
}  // namespace QorCliUtilities
