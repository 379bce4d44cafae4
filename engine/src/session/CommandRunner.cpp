#include "session/CommandRunner.h"

#include <unistd.h>

#include <iostream>
#include <utility>

#include "commands/CommandLine.h"
#include "output/Layout.h"
#include "output/Messages.h"
#include "output/Pointer.h"
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

std::vector<StageText> asTyped(std::vector<std::string> const& texts) {
  std::vector<StageText> stages;
  stages.reserve(texts.size());
  for (std::string const& text : texts) {
    stages.push_back({stages.size() + 1, text, text});
  }
  return stages;
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
      runInFull(asTyped(texts));
      output_.finish();
      return true;
    } catch (CommandFailure const&) {
      // What was printed before the failure comes before its message.
      output_.finish();
      throw;
    }
  } catch (NotUnderstood const& failure) {
    diagnostics_.showRecords();
    Messages::show(failure.what());
    pointOut(line, failure.stage());
  } catch (CommandFailure const& failure) {
    explain(line, failure);
  } catch (Interrupted const&) {
    output_.drop();
  }
  return false;
}

// A component that fails says in its log why, as a filter whose pattern is
// malformed.
void CommandRunner::explain(std::string const& line,
                            CommandFailure const& failure) {
  auto const reason = diagnostics_.takeReason();
  if (!reason) {
    return Messages::show(failure.what(), failure.lines());
  }
  Messages::show(std::string(failure.what()) + ": " + reason->sentence,
                 failure.lines());
  if (reason->place) pointAt(line, failure.stage(), *reason->place);
}

void CommandRunner::pointAt(std::string const& line, std::size_t stage,
                            FailureReason::Place const& place) const {
  std::size_t begin = CommandLine::findInStage(line, stage, place.text);
  if (begin == std::string::npos) {
    begin = CommandLine::findInStage(line, stage, place.inBytes());
  }
  if (begin == std::string::npos || ::isatty(STDERR_FILENO) == 0) return;
  std::cerr << Pointer::behind(line.substr(0, begin + place.offset), line, "",
                               Terminal::size().columns)
            << std::flush;
}

// Only for an operator: a log is better off with one line for each failure.
void CommandRunner::pointOut(std::string const& line, std::size_t stage) {
  if (::isatty(STDERR_FILENO) == 0) return;
  std::cerr << completer_.pointOut(line, stage, Terminal::size().columns)
            << std::flush;
  diagnostics_.dropRecords();
}

// Abbreviations are looked for only in a stage that is not understood as it
// stands, so that whatever is a command needs no asking and means itself. What
// has been opened by then has been given no text, and is opened again.
void CommandRunner::runInFull(std::vector<StageText> stages) {
  for (;;) {
    try {
      return runStages(stages);
    } catch (NotUnderstood const& failure) {
      StageText& stage = stages[failure.stage() - 1];
      bool const isFull = stage.full != stage.typed;
      if (!isFull) stage.full = completer_.inFull(stage.number, stage.typed);
      if (isFull || stage.full == stage.typed) throw;
      diagnostics_.dropTrace();
    }
  }
}

// A line that begins with none of the engine's commands begins with a pipe
// command, which works on standard input.
void CommandRunner::runStages(std::vector<StageText> const& stages) {
  StageText const& first = stages.front();
  bool const fromInput =
      !sourceCommands_.knows(CommandLine::firstWord(first.full), false);
  diagnostics_.dropTrace();  // of looking the word up
  std::unique_ptr<Source> const source =
      fromInput ? input_.rest() : prepare(first);
  diagnostics_.beginStages(fromInput ? kStandardInput : first.full);
  std::vector<PipeStage> pipes;
  for (std::size_t i = fromInput ? 0 : 1; i < stages.size(); ++i) {
    pipes.emplace_back(stages[i], session_.nextActionId(), session_,
                       &diagnostics_, diagnostics_.addStage(stages[i].full));
  }
  Pipeline pipeline(first.name(), std::move(pipes), output_, diagnostics_);
  LineInstances instances(plugins_);
  pipeline.run(*source, instances);
}

std::unique_ptr<Source> CommandRunner::prepare(StageText const& stage) {
  try {
    return sourceCommands_.prepare(stage.full);
  } catch (SourceFailure const& failure) {
    throw NotUnderstood(stage.number, stage.name() + ": " + failure.what());
  }
}

}  // namespace QorCliEngine
