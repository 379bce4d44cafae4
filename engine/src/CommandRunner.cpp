#include "CommandRunner.h"

#include <iostream>
#include <utility>

#include "CommandLine.h"
#include "EngineErrors.h"
#include "Framework.h"
#include "Pipeline.h"

namespace QorCliEngine {
namespace {

// What stands for the source in figures when no command prints the text.
constexpr char kStandardInput[] = "(standard input)";

void refuseEmptyStages(std::vector<std::string> const& texts) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!texts[i].empty()) continue;
    throw CommandFailure("stage " + std::to_string(i + 1) +
                         " is empty: a command is missing beside \"|\"");
  }
}

}  // namespace

CommandRunner::CommandRunner(Session& session, SourceCommands& sourceCommands,
                             StandardInput& input, OutputWriter& output,
                             Diagnostics& diagnostics)
    : session_(session),
      sourceCommands_(sourceCommands),
      input_(input),
      output_(output),
      diagnostics_(diagnostics) {}

bool CommandRunner::run(std::string const& line) {
  std::vector<std::string> const texts = CommandLine::stages(line);
  if (texts.size() == 1 && texts.front().empty()) return true;
  Diagnostics::Line const watched(diagnostics_);
  try {
    try {
      refuseEmptyStages(texts);
      runStages(texts);
      output_.finish();
      return true;
    } catch (CommandFailure const&) {
      // What was printed before the failure comes before its message.
      output_.finish();
      throw;
    }
  } catch (CommandFailure const& failure) {
    diagnostics_.showTrace();
    std::cerr << failure.lines() << "qorcli: " << failure.what() << std::endl;
  } catch (Interrupted const&) {
    output_.buffer().clear();
    output_.finish();
  }
  return false;
}

// A line that begins with none of the engine's commands begins with a pipe
// command, which works on standard input.
void CommandRunner::runStages(std::vector<std::string> const& texts) {
  std::string const& first = texts.front();
  bool const fromInput =
      !sourceCommands_.knows(CommandLine::firstWord(first), false);
  diagnostics_.dropTrace();  // of looking the word up
  std::unique_ptr<Source> const source =
      fromInput ? input_.rest() : prepare(first);
  std::vector<std::string> parts = texts;
  if (fromInput) parts.insert(parts.begin(), kStandardInput);
  diagnostics_.beginStages(parts);
  std::size_t const firstNumber = fromInput ? 0 : 1;
  std::vector<PipeStage> stages;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    stages.emplace_back(i + firstNumber, parts[i], session_.nextActionId(),
                        session_, diagnostics_.figures(i));
  }
  Pipeline pipeline(stageName(1, first), std::move(stages), output_,
                    diagnostics_);
  pipeline.run(*source, Framework::instance().pipeComponents());
}

std::unique_ptr<Source> CommandRunner::prepare(std::string const& text) {
  try {
    return sourceCommands_.prepare(text);
  } catch (SourceFailure const& failure) {
    throw CommandFailure(stageName(1, text) + ": " + failure.what());
  }
}

}  // namespace QorCliEngine
