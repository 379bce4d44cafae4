#include <gtest/gtest.h>

#include "AbstractCommand.h"
#include "Error.h"
#include "PipeOutput1.h"
#include "RecordingCommand.h"
#include "RecordingContext.h"
#include "Refusal.h"

namespace QorCliUtilities {
namespace {

using Tokens = std::vector<std::string>;
using QorUnit::expectError;
using QorUnit::RecordingCommand;
using QorUnit::RecordingContext;

struct Plain : AbstractCommand {
  using AbstractCommand::AbstractCommand;
  int execute(CliApiContext&, Tokens const&, IOutput&) override { return 0; }
};

TEST(AbstractCommand, KeepsACopyOfItsName) {
  std::string name = "first";
  Plain const command(name.c_str());
  name = "other";
  EXPECT_STREQ(command.name(), "first");
}

TEST(AbstractCommand, AuthorizesEverybody) {
  RecordingContext session;
  EXPECT_TRUE(Plain("p").isAuthorized(session.context));
}

TEST(AbstractCommand, SendsThePendingPromptAfterTheCommand) {
  RecordingContext session;
  QorCliPipe::PipeOutput1 output;
  RecordingCommand command("c", 42);
  command.prompt = "next>";
  EXPECT_EQ(command.executeVerbose(session.context, {"a", "b"}, output), 42);
  EXPECT_EQ(command.runs, (std::vector<Tokens>{{"a", "b"}}));
  EXPECT_EQ(output.getOutput(), Tokens{"c ran"});
  EXPECT_EQ(session.record.calls, Tokens{"setPrompt next>"});
}

TEST(AbstractCommand, ThrowsWhenThePromptCannotBeSet) {
  for (QorReturnT status : {-1, 5}) {
    RecordingContext session;
    session.record.result = status;
    QorCliPipe::PipeOutput1 output;
    RecordingCommand command("c");
    command.prompt = "next>";
    expectError("Unable to set prompt",
                [&] { command.executeVerbose(session.context, {}, output); });
    EXPECT_EQ(command.runs.size(), 1U);
  }
}

TEST(AbstractCommand, ThrowsWhenPromptsAreUnsupported) {
  RecordingContext session;
  session.record.setPrompt = nullptr;
  QorCliPipe::PipeOutput1 output;
  RecordingCommand command("c");
  EXPECT_THROW(command.executeVerbose(session.context, {}, output), Error);
}

}  // namespace
}  // namespace QorCliUtilities
