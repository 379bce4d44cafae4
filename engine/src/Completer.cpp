#include "Completer.h"

#include "CandidateContext.h"
#include "CommandLine.h"
#include "EngineErrors.h"
#include "Framework.h"
#include "PipeStage.h"
#include "StatusText.h"

namespace QorCliEngine {
namespace {

constexpr char kPipeHelp[] = "Pipe the output through a command";
constexpr char kOwnCommands[] = "Commands, which print something";
constexpr char kPipeCommands[] =
    "Pipe commands, which work on what was printed";

}  // namespace

Completer::Completer(Session& session, SourceCommands& sourceCommands)
    : session_(session), sourceCommands_(sourceCommands) {}

std::vector<Candidate> Completer::ask(QorCliActionEnum_2T action,
                                      std::string const& line) {
  CommandLine::TypedEnd const end = CommandLine::typedEnd(line);
  std::string const stage = line.substr(end.stageBegin);
  std::vector<Candidate> candidates;
  try {
    if (isOwnStage(line)) {
      sourceCommands_.offer(action, stage, candidates);
    } else {
      askComponents(action, stage, candidates);
    }
  } catch (std::runtime_error const& failure) {
    throw CommandFailure(stageName(end.stageNumber + 1, stage) + ": " +
                         failure.what());
  }
  return candidates;
}

std::vector<Candidate> Completer::help(std::string const& line) {
  std::vector<Candidate> candidates = ask(QOR_CLI_ACTION_HELP, line);
  // Help says nothing of the end of a line behind a last keyword.
  if (isOwnStage(line) && !Candidates::offerReturn(candidates)) {
    for (Candidate const& candidate : ask(QOR_CLI_ACTION_COMPLETE, line)) {
      if (Candidates::offerReturn({candidate})) candidates.push_back(candidate);
    }
  }
  if (Candidates::offerReturn(candidates)) {
    candidates.push_back(
        {QOR_CLI_TOKEN_NEXT_WORD, "|", kPipeHelp, {QOR_CLI_SORT_LAST, "|"}});
  }
  return Candidates::merged(candidates);
}

std::string Completer::commandList(std::size_t width) {
  auto const listFor = [&](std::string const& line) {
    return Candidates::helpList(
        Candidates::merged(ask(QOR_CLI_ACTION_HELP, line)), width);
  };
  return std::string(kOwnCommands) + ":\n" + listFor("") + '\n' +
         kPipeCommands + ":\n" + listFor("|") +
         "\nPut a | between them:\n"
         "  show file /etc/passwd | filter -i root\n";
}

std::vector<TreeWord> Completer::commandTrees() {
  using Action = QorCliActionEnum_2T;
  CommandTreeExplorer explorer;
  std::vector<TreeWord> trees;
  trees.push_back(explorer.explore(
      "qorcli", kOwnCommands, [&](Action action, std::string const& line) {
        std::vector<Candidate> candidates;
        sourceCommands_.offer(action, line, candidates);
        return candidates;
      }));
  for (PipeComponent const& component :
       Framework::instance().pipeComponents()) {
    trees.push_back(
        explorer.explore(component.name(), kPipeCommands,
                         [&](Action action, std::string const& line) {
                           std::vector<Candidate> candidates;
                           askComponent(component, action, line, candidates);
                           return candidates;
                         }));
  }
  return trees;
}

// Whether `line` is in a stage that can only be one of the engine's commands.
bool Completer::isOwnStage(std::string const& line) const {
  CommandLine::TypedEnd const end = CommandLine::typedEnd(line);
  std::string const stage = line.substr(end.stageBegin);
  std::string const word = CommandLine::firstWord(stage);
  bool const begun = word.size() == stage.size();
  return end.stageNumber == 0 && sourceCommands_.knows(word, begun);
}

void Completer::askComponents(QorCliActionEnum_2T action,
                              std::string const& stage,
                              std::vector<Candidate>& candidates) {
  for (PipeComponent const& component :
       Framework::instance().pipeComponents()) {
    askComponent(component, action, stage, candidates);
  }
}

void Completer::askComponent(PipeComponent const& component,
                             QorCliActionEnum_2T action,
                             std::string const& stage,
                             std::vector<Candidate>& candidates) {
  CandidateContext context(session_, candidates);
  unsigned matches = 0;
  PipeRequest const request{action, session_.nextActionId(), stage, ""};
  QorReturnT const status = component.use(context, request, matches);
  if (status != 0 && candidates.empty()) {
    throw SourceFailure("a component failed with " + statusText(status));
  }
}

}  // namespace QorCliEngine
