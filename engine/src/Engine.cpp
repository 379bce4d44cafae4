#include "Engine.h"

#include <unistd.h>

#include "completion/TreeDrawing.h"
#include "output/Messages.h"
#include "output/PagedOutput.h"
#include "output/Terminal.h"
#include "session/Shell.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

// Whether there is an operator who types command lines.
bool isInteractive(Options const& options) {
  return options.lines.empty() && ::isatty(STDIN_FILENO) != 0;
}

std::unique_ptr<OutputWriter> makeOutput(Options const& options) {
  // A trace would be written across the pager's screen.
  bool const paged = isInteractive(options) && !options.noPager &&
                     !options.trace && ::isatty(STDOUT_FILENO) != 0;
  auto const form = ::isatty(STDOUT_FILENO) != 0 && !options.raw
                        ? OutputWriter::Form::kVisible
                        : OutputWriter::Form::kRaw;
  if (paged) return std::make_unique<PagedOutput>(form);
  return std::make_unique<OutputWriter>(form);
}

std::string asText(std::vector<std::string> const& lines) {
  std::string text;
  for (std::string const& line : lines) text += line + '\n';
  return text;
}

}  // namespace

Engine::Engine(Options const& options)
    : options_(options),
      diagnostics_(options.trace, options.timing),
      plugins_(options.plugins, diagnostics_),
      session_(options.mode, options.cursor, options.loginName),
      output_(makeOutput(options)),
      sourceCommands_(
          session_,
          {[this] { return completer_.commandList(Terminal::size().columns); },
           [this] { return asText(history().lines()); },
           [this] {
             return TreeDrawing::lines(completer_.commandTrees(),
                                       Terminal::size().columns);
           },
           [this] { return TreeDrawing::graph(completer_.commandTrees()); },
           [] { return std::string("qorcli " QOR_ENGINE_VERSION "\n"); },
           [this](std::string const& command) {
             return completer_.commandHelp(command, Terminal::size().columns);
           },
           [this](std::string const& word) {
             return completer_.commandNames(word);
           }}),
      completer_(session_, sourceCommands_),
      runner_(plugins_, session_, sourceCommands_, completer_, input_, *output_,
              diagnostics_) {}

int Engine::run() {
  // What failed when the plug-ins were loaded; how it went belongs to no line.
  options_.trace ? diagnostics_.dropTrace() : diagnostics_.showRecords();
  try {
    return dispatch();
  } catch (OutputClosed const&) {
    return kExitSuccess;
  }
}

int Engine::dispatch() {
  if (options_.lineToComplete) {
    return printCandidates(QOR_CLI_ACTION_COMPLETE, *options_.lineToComplete);
  }
  if (options_.lineToHelp) {
    return printCandidates(QOR_CLI_ACTION_HELP, *options_.lineToHelp);
  }
  if (isInteractive(options_)) return runShell();
  return options_.lines.empty() ? runScript() : runLines();
}

int Engine::runLines() {
  int status = kExitSuccess;
  for (std::string const& line : options_.lines) {
    if (session_.isShutDown()) break;
    if (!runner_.run(line)) status = kExitFailedCommand;
  }
  return status;
}

int Engine::runScript() {
  int status = kExitSuccess;
  std::string line;
  try {
    while (!session_.isShutDown() && input_.nextLine(line)) {
      if (!runner_.run(line)) status = kExitFailedCommand;
    }
  } catch (SourceFailure const& failure) {
    Messages::show(failure.what());
    status = kExitFailedCommand;
  }
  return status;
}

int Engine::runShell() {
  Shell shell(session_, completer_, history(), runner_);
  return shell.run() ? kExitSuccess : kExitFailedCommand;
}

// Few runs need it, and making it makes its file.
History& Engine::history() {
  if (!history_) history_.emplace();
  return *history_;
}

int Engine::printCandidates(QorCliActionEnum_2T action,
                            std::string const& line) {
  Diagnostics::Line const watched(diagnostics_);
  try {
    output_->buffer() += Candidates::rows(completer_.ask(action, line));
    output_->finish();
    return kExitSuccess;
  } catch (CommandFailure const& failure) {
    Messages::show(failure.what());
    return kExitFailedCommand;
  }
}

}  // namespace QorCliEngine
