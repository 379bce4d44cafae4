#ifndef QOR_CLI_COMMAND_SET_H
#define QOR_CLI_COMMAND_SET_H

#include <memory>
#include <vector>

#include "AutoCompleteTree.h"
#include "FrameworkPortal.h"
#include "PipeAction.h"
#include "PipeCommand.h"

namespace QorCliUtilities {

// Writes the reason of the exception that is being handled to the system log;
// without memory it is dropped.
void logException() noexcept;

// Returns what `call` returns, or -1, with an error in the system log, when it
// throws.
template <class Call>
QorReturnT answerWithoutThrowing(Call const& call) noexcept {
  try {
    return call();
  } catch (...) {
    logException();
    return -1;
  }
}

// The commands of a component, their tree, and how they answer the engine:
// CommandComponent without the types of its commands. One call at a time.
class CommandSet {
 public:
  // Adds a command, which is not null. Before initialise() only. Throws Error
  // when there is one with its keyword, in any letter case.
  void add(std::unique_ptr<PipeCommand> command);

  // Fills the tree and registers `component`, which is not owned and must stay
  // valid until terminate(). Returns 0, -1 when the framework offers no portal,
  // or what it returned when it refused the component. Throws what the
  // framework throws, and std::bad_alloc; can be called again then.
  QorReturnT initialise(QorMgmtSpiInterfacePortalAccessor* accessor,
                        QorMgmtSpiComponent_1* component);

  // Empties the tree, ends all runs and unregisters `component`. The set can be
  // initialised again. Returns 0. Throws what the framework throws, when all
  // else is done.
  QorReturnT terminate(QorMgmtSpiComponent_1* component);

  // Ends all runs, which print nothing more. Returns 0.
  QorReturnT stop();

  // Answers a call of useModule. Returns what answerPipeAction() returns, or
  // -1 when it throws. An execution that fails ends the run of its action.
  QorReturnT answer(CliApiContext& context, PipeAction const& action) noexcept;

  // Lets each command finish the action, whose input is complete, and emits
  // what it prints then. Returns 0, or -1 when a command fails or the call
  // cannot be answered. The action has no run afterwards in either case.
  QorReturnT complete(CliApiContext& context, unsigned actionId) noexcept;

 private:
  void fillTree();
  void forgetRun(unsigned actionId);

  // Destroyed in reverse order: the tree refers to the commands.
  std::vector<std::unique_ptr<PipeCommand>> commands_;
  AutoCompleteTree tree_;
  FrameworkPortal portal_;
};

}  // namespace QorCliUtilities

#endif
