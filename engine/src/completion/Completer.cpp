#include "completion/Completer.h"

#include <Poco/Ascii.h>
#include <Poco/String.h>

#include <algorithm>

#include "AutoCompleteNode.h"
#include "calls/CallContext.h"
#include "calls/StatusText.h"
#include "commands/CommandLine.h"
#include "output/Pointer.h"
#include "pipeline/PipeStage.h"
#include "plugins/Framework.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

using QorCliUtilities::AutoCompleteNode;

constexpr std::size_t kMostExpected = 10;  // words
constexpr char kExpected[] = "expected ";

// What stands before a stage that is not the first one of its line.
constexpr char kLaterStage[] = "| ";

Candidate const kPipe{QOR_CLI_TOKEN_NEXT_WORD,
                      "|",
                      "Pipe the output through a command",
                      {QOR_CLI_SORT_LAST, "|"}};
Candidate const kReturn{
    QOR_CLI_TOKEN_OPTION, "<cr>", "", {QOR_CLI_SORT_LAST, "<cr>"}};
constexpr char kOwnCommands[] = "Commands, which print something";
constexpr char kPipeCommands[] =
    "Pipe commands, which work on what was printed";

std::string listed(std::vector<std::string> texts) {
  bool const tooMany = texts.size() > kMostExpected;
  if (tooMany) texts.resize(kMostExpected);
  if (tooMany) texts.push_back("...");
  return Poco::cat(std::string(", "), texts.begin(), texts.end());
}

std::string endingStageName(std::string const& line) {
  return stageName(CommandLine::typedEnd(line).stageNumber + 1,
                   CommandLine::stages(line).back());
}

// Collects the candidates that a component offers, in the order given.
class CandidateContext : public CallContext {
 public:
  CandidateContext(Session& session,
                   std::vector<QorCliUtilities::AutoCompleteResult>& candidates)
      : CallContext(session), candidates_(candidates) {}

 protected:
  void acceptCandidate(
      QorCliUtilities::AutoCompleteResult const& candidate) override {
    candidates_.push_back(candidate);
  }

 private:
  std::vector<QorCliUtilities::AutoCompleteResult>& candidates_;
};

}  // namespace

Completer::Completer(Session& session, SourceCommands& sourceCommands)
    : session_(session),
      sourceCommands_(sourceCommands),
      abbreviations_([this](std::string const& line) {
        return askAsTyped(QOR_CLI_ACTION_COMPLETE, line);
      }) {}

std::vector<Candidate> Completer::ask(QorCliActionEnum_2T action,
                                      std::string const& line) {
  std::vector<Candidate> candidates = askAsTyped(action, line);
  if (!candidates.empty()) return candidates;
  std::string const full =
      abbreviations_.expand(line, Abbreviations::Last::kTyped).line;
  return full == line ? candidates : askAsTyped(action, full);
}

std::vector<Candidate> Completer::askAsTyped(QorCliActionEnum_2T action,
                                             std::string const& line) {
  std::string const stage = line.substr(CommandLine::typedEnd(line).stageBegin);
  std::vector<Candidate> candidates;
  try {
    bool const own = isOwnStage(line);
    if (own) sourceCommands_.offer(action, stage, candidates);
    if (!own || mayBePipeCommand(stage)) {
      askComponents(action, stage, candidates);
    }
  } catch (std::runtime_error const& failure) {
    throw CommandFailure(endingStageName(line) + ": " + failure.what());
  }
  return candidates;
}

std::vector<Candidate> Completer::complete(std::string const& line) {
  std::vector<Candidate> candidates = ask(QOR_CLI_ACTION_COMPLETE, line);
  if (Candidates::offerReturn(candidates) && refusedStage(line)) {
    Candidates::removeReturn(candidates);
  }
  return Candidates::merged(candidates);
}

// Components do not always know whether a line may end: a command tree's help
// says nothing of it after a last keyword, and a node for many words says so
// whatever they are. It is the line itself that tells.
std::vector<Candidate> Completer::help(std::string const& line) {
  std::vector<Candidate> candidates = ask(QOR_CLI_ACTION_HELP, line);
  Candidates::removeReturn(candidates);
  if (!refusedStage(line)) {
    candidates.insert(candidates.end(), {kPipe, kReturn});
  }
  return Candidates::merged(candidates);
}

// The first stage that would be refused, counted from 1.
std::optional<std::size_t> Completer::refusedStage(std::string const& line) {
  std::vector<std::string> const texts = CommandLine::stages(line);
  if (CommandLine::openQuote(line) != std::string::npos) return texts.size();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!understands(i + 1, texts[i])) return i + 1;
  }
  return std::nullopt;
}

bool Completer::understands(std::size_t stage, std::string const& text) {
  if (text.empty()) return false;
  if (isUnderstood(stage, text)) return true;
  try {
    std::string const full = inFull(stage, text);
    return full != text && isUnderstood(stage, full);
  } catch (NotUnderstood const&) {
    return false;
  }
}

// Whether a stage is understood as it stands.
bool Completer::isUnderstood(std::size_t stage, std::string const& text) {
  bool const own =
      stage == 1 && sourceCommands_.knows(CommandLine::firstWord(text), false);
  if (!own) {
    Session session(session_);
    return PipeStage({stage, text, text}, session_.nextActionId(), session,
                     nullptr, nullptr)
        .canOpen(Framework::instance().pipeComponents());
  }
  try {
    sourceCommands_.prepare(text);
    return true;
  } catch (SourceFailure const&) {
    return false;
  }
}

std::string Completer::inFull(std::size_t stage, std::string const& text) {
  std::string const before = stage == 1 ? "" : kLaterStage;
  auto const full =
      abbreviations_.expand(before + text, Abbreviations::Last::kFinished);
  if (full.ambiguity) {
    throw NotUnderstood(
        stage, stageName(stage, text) + ": " + full.ambiguity->sentence());
  }
  return full.line.substr(before.size());
}

std::string Completer::noCandidates(std::string const& line) {
  std::string const where = endingStageName(line) + ": ";
  auto const ambiguity =
      abbreviations_.expand(line, Abbreviations::Last::kTyped).ambiguity;
  if (ambiguity) return where + ambiguity->sentence();
  auto const word = unknownWord(line);
  if (!word) return endedBy(line);
  return where + "no known word begins with \"" +
         line.substr(word->begin, word->end - word->begin) + '"';
}

// Why nothing is offered after words that are known.
std::string Completer::endedBy(std::string const& line) {
  auto const stage = refusedStage(line);
  if (!stage) return endingStageName(line) + ": no known word may follow";
  return stageName(*stage, CommandLine::stages(line)[*stage - 1]) +
         ": cannot be run as it stands";
}

// The first word of the stage at the end with which the offers stop. Words are
// found by their number: in full they are as many, and elsewhere.
std::optional<Completer::Word> Completer::unknownWord(std::string const& line) {
  std::string const full =
      abbreviations_.expand(line, Abbreviations::Last::kTyped).line;
  std::vector<std::size_t> const ends = CommandLine::wordEnds(full);
  auto const end =
      std::partition_point(ends.begin(), ends.end(), [&](std::size_t wordEnd) {
        std::string const begin = full.substr(0, wordEnd);
        return !askAsTyped(QOR_CLI_ACTION_COMPLETE, begin).empty() ||
               !askAsTyped(QOR_CLI_ACTION_HELP, begin).empty();
      });
  if (end == ends.end()) return std::nullopt;
  std::size_t const typedEnd =
      CommandLine::wordEnds(line)[static_cast<std::size_t>(end - ends.begin())];
  return Word{CommandLine::typedEnd(line.substr(0, typedEnd)).wordBegin,
              typedEnd};
}

std::string Completer::pointOut(std::string const& line, std::size_t stage,
                                std::size_t width) {
  std::string typed = line.substr(0, CommandLine::stageEnd(line, stage));
  try {
    auto const ambiguity =
        abbreviations_.expand(typed, Abbreviations::Last::kFinished).ambiguity;
    if (ambiguity) {
      return Pointer::behind(typed.substr(0, ambiguity->begin), line,
                             kExpected + listed(ambiguity->choices), width);
    }
    auto const word = unknownWord(typed);
    typed = word ? typed.substr(0, word->begin) : typed + ' ';
    std::string const words = expectedBehind(typed);
    return words.empty()
               ? ""
               : Pointer::behind(typed, line, kExpected + words, width);
  } catch (CommandFailure const&) {
    return "";
  }
}

// Cuts off the last word of `typed` when nothing may follow it: it is only the
// beginning of one that is known.
std::string Completer::expectedBehind(std::string& typed) {
  std::string list = expected(typed);
  if (!list.empty()) return list;
  Poco::trimRightInPlace(typed);
  typed.resize(CommandLine::typedEnd(typed).wordBegin);
  return expected(typed);
}

// What may follow `line`, in words. Components know that a word has ended by
// the blank after it.
std::string Completer::expected(std::string line) {
  std::vector<std::string> texts;
  if (!line.empty() && Poco::Ascii::isSpace(line.back())) line.back() = ' ';
  for (Candidate const& candidate : help(line)) {
    texts.push_back(Candidates::isReturn(candidate) ? "the end of the line"
                                                    : candidate.completion);
  }
  return listed(std::move(texts));
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

// For a command in the first stage and for one after it.
std::vector<Candidate> Completer::helpAnywhere(std::string const& command) {
  std::vector<Candidate> both = ask(QOR_CLI_ACTION_HELP, command);
  for (Candidate& candidate : ask(QOR_CLI_ACTION_HELP, kLaterStage + command)) {
    both.push_back(std::move(candidate));
  }
  return Candidates::merged(std::move(both));
}

std::string Completer::commandHelp(std::string const& command,
                                   std::size_t width) {
  std::vector<Candidate> words = helpAnywhere(command);
  words.erase(std::remove_if(words.begin(), words.end(),
                             [](Candidate const& candidate) {
                               return candidate.token != QOR_CLI_TOKEN_WORD;
                             }),
              words.end());
  if (words.empty()) {
    throw SourceFailure("there is no command \"" + command + '"');
  }
  std::string list = Candidates::helpList(words, width);
  if (words.size() > 1) return list;
  std::string const next =
      Candidates::helpList(helpAnywhere(command + ' '), width);
  return list + (next.empty() ? "" : '\n' + next);
}

std::vector<std::string> Completer::commandNames(std::string const& word) {
  std::vector<std::string> names;
  for (Candidate const& candidate : helpAnywhere(word)) {
    if (AutoCompleteNode::match(candidate.completion, word)) {
      names.push_back(candidate.completion);
    }
  }
  return names;
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

// Of a stage that is one of the engine's own as far as it is typed: whether its
// first word is only the beginning of one.
bool Completer::mayBePipeCommand(std::string const& stage) const {
  return !stage.empty() &&
         !sourceCommands_.knows(CommandLine::firstWord(stage), false);
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
