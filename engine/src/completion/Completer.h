#ifndef QOR_CLI_ENGINE_COMPLETER_H
#define QOR_CLI_ENGINE_COMPLETER_H

#include <optional>
#include <string>
#include <vector>

#include "calls/Session.h"
#include "commands/SourceCommands.h"
#include "completion/Abbreviations.h"
#include "completion/CommandTree.h"
#include "output/Candidates.h"
#include "plugins/PipeComponent.h"

namespace QorCliEngine {

// Asks for the candidates of a partly typed line: the engine's own commands for
// the stage before the first "|", the loaded components for the others, and for
// a first stage that can only be a pipe command; both while its first word is
// only begun. Where nothing is known of a line as it stands, it is read with
// its abbreviations in full. One thread.
class Completer {
 public:
  // Neither argument is owned.
  Completer(Session& session, SourceCommands& sourceCommands);

  // The candidates for completing (QOR_CLI_ACTION_COMPLETE) or helping
  // (QOR_CLI_ACTION_HELP) the end of `line`, in the order in which they were
  // offered, component by component. Throws CommandFailure when the stage
  // cannot be understood or a component fails.
  std::vector<Candidate> ask(QorCliActionEnum_2T action,
                             std::string const& line);

  // The candidates for completion and for help as the operator is to see them:
  // merged, and without "<cr>" where the line would be refused. Where it would
  // not, help has "<cr>", and "|" since a pipe command may follow.
  //
  // Whether a line would be refused is found out as before it is run: its pipe
  // commands are opened, over a copy of the session.
  std::vector<Candidate> complete(std::string const& line);
  std::vector<Candidate> help(std::string const& line);

  // The text of a stage, counted from 1, with abbreviated command words in
  // full. Throws NotUnderstood when one is ambiguous.
  std::string inFull(std::size_t stage, std::string const& text);

  // Says, when there are no candidates for `line`, which word is not known or
  // is ambiguous, in plain words that name the stage. A component need not
  // offer all that it knows. Asks for few of the line's beginnings, however
  // many words it has. Throws as ask().
  std::string noCandidates(std::string const& line);

  // Whether `line` is in a stage that can only be one of the engine's commands,
  // of which the candidates with a slash are paths.
  bool isOwnStage(std::string const& line) const;

  // The line, and below it a mark under the first word of a stage, counted from
  // 1, that is not known, or after the stage when it is not complete, with
  // what was expected there. Empty when that cannot be told. `width` as in
  // Layout.
  std::string pointOut(std::string const& line, std::size_t stage,
                       std::size_t width);

  // What the command help prints. `width` as in Layout.
  std::string commandList(std::size_t width);

  // What the command help prints of one: what it does and what may follow it;
  // of several that begin so, what they do. Throws SourceFailure when there is
  // none.
  std::string commandHelp(std::string const& command, std::size_t width);

  // The first words of commands that begin as `word` does, sorted.
  std::vector<std::string> commandNames(std::string const& word);

  // The trees of the engine's own commands and of each component's.
  std::vector<TreeWord> commandTrees();

 private:
  struct Word {
    std::size_t begin;
    std::size_t end;
  };

  std::vector<Candidate> askAsTyped(QorCliActionEnum_2T action,
                                    std::string const& line);
  std::optional<Word> unknownWord(std::string const& line);
  std::string expectedBehind(std::string& typed);
  std::string expected(std::string line);
  std::optional<std::size_t> refusedStage(std::string const& line);
  bool understands(std::size_t stage, std::string const& text);
  bool isUnderstood(std::size_t stage, std::string const& text);
  std::string endedBy(std::string const& line);
  bool mayBePipeCommand(std::string const& stage) const;
  std::vector<Candidate> helpAnywhere(std::string const& command);
  void askComponents(QorCliActionEnum_2T action, std::string const& stage,
                     std::vector<Candidate>& candidates);
  void askComponent(PipeComponent const& component, QorCliActionEnum_2T action,
                    std::string const& stage,
                    std::vector<Candidate>& candidates);

  Session& session_;
  SourceCommands& sourceCommands_;
  Abbreviations abbreviations_;
};

}  // namespace QorCliEngine

#endif
