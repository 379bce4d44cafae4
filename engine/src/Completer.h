#ifndef QOR_CLI_ENGINE_COMPLETER_H
#define QOR_CLI_ENGINE_COMPLETER_H

#include <string>
#include <vector>

#include "Candidates.h"
#include "CommandTree.h"
#include "PipeComponent.h"
#include "Session.h"
#include "SourceCommands.h"

namespace QorCliEngine {

// Asks for the candidates of a partly typed line: the engine's own commands for
// the stage before the first "|", the loaded components for the others, and for
// a first stage that can only be a pipe command. One thread.
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

  // The candidates for help as the operator is to see them: merged, and with
  // "|" where a pipe command may follow.
  std::vector<Candidate> help(std::string const& line);

  // What the command help prints. `width` as in Layout.
  std::string commandList(std::size_t width);

  // The trees of the engine's own commands and of each component's.
  std::vector<TreeWord> commandTrees();

 private:
  bool isOwnStage(std::string const& line) const;
  void askComponents(QorCliActionEnum_2T action, std::string const& stage,
                     std::vector<Candidate>& candidates);
  void askComponent(PipeComponent const& component, QorCliActionEnum_2T action,
                    std::string const& stage,
                    std::vector<Candidate>& candidates);

  Session& session_;
  SourceCommands& sourceCommands_;
};

}  // namespace QorCliEngine

#endif
