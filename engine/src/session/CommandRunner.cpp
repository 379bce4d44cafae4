#include "session/CommandRunner.h"

#include <unistd.h>

#include <iostream>
#include <utility>

#include "commands/CommandLine.h"
#include "output/Layout.h"
#include "output/Messages.h"
#include "output/Terminal.h"
#include "pipeline/Pipeline.h"
#include "plugins/LineInstances.h"
#include "system/EngineErrors.h"

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

void refuseOpenQuote(std::string const& line,
                     std::vector<std::string> const& texts) {
  std::size_t const quote = CommandLine::openQuote(line);
  if (quote == std::string::npos) return;
  std::size_t const column = Layout::width(line.substr(0, quote)) + 1;
  throw CommandFailure(stageName(texts.size(), texts.back()) +
                       ": the quote at column " + std::to_string(column) +
                       " of the line is not closed");
}

}  // namespace

CommandRunner::CommandRunner(Plugins& plugins, Session& session,
                             SourceCommands& sourceCommands,
                             Completer& completer, StandardInput& input,
                             OutputWriter& output, Diagnostics& diagnostics)
    : plugins_(plugins),
      session_(session),
      sourceCommands_(sourceCommands),
      completer_(completer),
      input_(input),
      output_(output),
      diagnostics_(diagnostics) {}

bool CommandRunner::run(std::string const& line) {
  if (CommandLine::isSilent(line)) return true;
  std::vector<std::string> const texts = CommandLine::stages(line);
  Diagnostics::Line const watched(diagnostics_);
  try {
    try {
      refuseOpenQuote(line, texts);
      refuseEmptyStages(texts);
      runStages(texts);
      output_.finish();
      return true;
    } catch (CommandFailure const&) {
      // What was printed before the failure comes before its message.
      output_.finish();
      throw;
    }
  } catch (NotUnderstood const& failure) {
    diagnostics_.showTrace();
    Messages::show(failure.what());
    pointOut(line, failure.stage());
  } catch (CommandFailure const& failure) {
    diagnostics_.showTrace();
    Messages::show(failure.what(), failure.lines());
  } catch (Interrupted const&) {
    output_.drop();
  }
  return false;
}

// Only for an operator: a log is better off with one line for each failure.
void CommandRunner::pointOut(std::string const& line, std::size_t stage) {
  if (::isatty(STDERR_FILENO) == 0) return;
  std::cerr << completer_.pointOut(line, stage, Terminal::size().columns)
            << std::flush;
  diagnostics_.dropTrace();
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
  LineInstances instances(plugins_);
  pipeline.run(*source, instances);
}

std::unique_ptr<Source> CommandRunner::prepare(std::string const& text) {
  try {
    return sourceCommands_.prepare(text);
  } catch (SourceFailure const& failure) {
    throw NotUnderstood(1, stageName(1, text) + ": " + failure.what());
  }
}

}  // namespace QorCliEngine
