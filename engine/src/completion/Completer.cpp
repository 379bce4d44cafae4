#include "completion/Completer.h"

#include <Poco/String.h>

#include <algorithm>

#include "calls/CandidateContext.h"
#include "calls/StatusText.h"
#include "commands/CommandLine.h"
#include "output/ControlCharacters.h"
#include "output/Layout.h"
#include "pipeline/PipeStage.h"
#include "plugins/Framework.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

constexpr std::size_t kMostExpected = 10;  // words
constexpr std::size_t kIndent = 2;         // cells

constexpr char kPipeHelp[] = "Pipe the output through a command";
constexpr char kOwnCommands[] = "Commands, which print something";
constexpr char kPipeCommands[] =
    "Pipe commands, which work on what was printed";

std::string endingStageName(std::string const& line) {
  return stageName(CommandLine::typedEnd(line).stageNumber + 1,
                   CommandLine::stages(line).back());
}

}  // namespace

Completer::Completer(Session& session, SourceCommands& sourceCommands)
    : session_(session), sourceCommands_(sourceCommands) {}

std::vector<Candidate> Completer::ask(QorCliActionEnum_2T action,
                                      std::string const& line) {
  std::string const stage = line.substr(CommandLine::typedEnd(line).stageBegin);
  std::vector<Candidate> candidates;
  try {
    if (isOwnStage(line)) {
      sourceCommands_.offer(action, stage, candidates);
    } else {
      askComponents(action, stage, candidates);
    }
  } catch (std::runtime_error const& failure) {
    throw CommandFailure(endingStageName(line) + ": " + failure.what());
  }
  return candidates;
}

std::vector<Candidate> Completer::help(std::string const& line) {
  std::vector<Candidate> candidates = ask(QOR_CLI_ACTION_HELP, line);
  if (!Candidates::offerReturn(candidates)) addReturn(line, candidates);
  if (Candidates::offerReturn(candidates)) {
    if (earlierStagesMayRun(line)) {
      candidates.push_back(
          {QOR_CLI_TOKEN_NEXT_WORD, "|", kPipeHelp, {QOR_CLI_SORT_LAST, "|"}});
    } else {
      Candidates::removeReturn(candidates);
    }
  }
  return Candidates::merged(candidates);
}

// A command tree's help says nothing of the end of a line behind a last
// keyword; its completion does.
void Completer::addReturn(std::string const& line,
                          std::vector<Candidate>& candidates) {
  try {
    for (Candidate const& candidate : ask(QOR_CLI_ACTION_COMPLETE, line)) {
      if (Candidates::isReturn(candidate)) candidates.push_back(candidate);
    }
  } catch (CommandFailure const&) {
    // Whoever cannot complete a line does not say that it may end.
  }
}

// Whether the stages before the one that is being typed may run, as far as can
// be told without running them.
bool Completer::earlierStagesMayRun(std::string const& line) {
  std::vector<std::string> stages = CommandLine::stages(line);
  stages.pop_back();
  if (stages.empty()) return true;
  for (std::string const& stage : stages) {
    if (stage.empty()) return false;
  }
  std::string const& first = stages.front();
  if (!sourceCommands_.knows(CommandLine::firstWord(first), false)) return true;
  try {
    sourceCommands_.prepare(first);
    return true;
  } catch (SourceFailure const&) {
    return false;
  }
}

std::string Completer::noCandidates(std::string const& line) {
  std::string const where = endingStageName(line) + ": ";
  auto const word = unknownWord(line);
  if (!word) return where + "no known word may follow";
  return where + "no known word begins with \"" +
         line.substr(word->begin, word->end - word->begin) + '"';
}

// The first word of the stage at the end with which the offers stop.
std::optional<Completer::Word> Completer::unknownWord(std::string const& line) {
  std::vector<std::size_t> const ends = CommandLine::wordEnds(line);
  auto const end = std::partition_point(
      ends.begin(), ends.end(),
      [&](std::size_t wordEnd) { return offersFor(line.substr(0, wordEnd)); });
  if (end == ends.end()) return std::nullopt;
  return Word{CommandLine::typedEnd(line.substr(0, *end)).wordBegin, *end};
}

bool Completer::offersFor(std::string const& line) {
  return !ask(QOR_CLI_ACTION_COMPLETE, line).empty() ||
         !ask(QOR_CLI_ACTION_HELP, line).empty();
}

std::string Completer::pointOut(std::string const& line, std::size_t stage,
                                std::size_t width) {
  std::string typed = line.substr(0, CommandLine::stageEnd(line, stage));
  std::string list;
  try {
    auto const word = unknownWord(typed);
    typed = word ? typed.substr(0, word->begin) : typed + ' ';
    list = expected(typed);
    if (list.empty()) {
      // The word before is only the beginning of one that is known.
      Poco::trimRightInPlace(typed);
      typed.resize(CommandLine::typedEnd(typed).wordBegin);
      list = expected(typed);
    }
  } catch (CommandFailure const&) {
    return "";
  }
  if (list.empty()) return "";
  std::string const shown = ControlCharacters::visible(line);
  std::size_t const mark = Layout::width(ControlCharacters::visible(typed));
  bool const fits = Layout::width(shown) + kIndent < width;
  std::string const indent(kIndent, ' ');
  std::string const text =
      fits ? indent + shown + '\n' + indent + std::string(mark, ' ') + "^ "
           : indent;
  return text + "expected " + list + '\n';
}

// What may follow `line`, in words.
std::string Completer::expected(std::string const& line) {
  std::string list;
  std::size_t count = 0;
  for (Candidate const& candidate : help(line)) {
    if (++count > kMostExpected) return list + ", ...";
    std::string const text = Candidates::isReturn(candidate)
                                 ? "the end of the line"
                                 : candidate.completion;
    list += (list.empty() ? "" : ", ") + text;
  }
  return list;
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
