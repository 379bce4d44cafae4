#ifndef QOR_CLI_COMMAND_SET_H
#define QOR_CLI_COMMAND_SET_H

#include <memory>
#include <vector>

#include "AutoCompleteTree.h"
#include "FrameworkPortal.h"
#include "PipeAction.h"
#include "PipeCommand.h"

namespace QorCliUtilities {

// Writes the reason of the current exception to the system log at severity 4,
// or drops it if memory runs out. Called within a catch clause.
void logException() noexcept;

// Returns the result of `call`, or -1 if it throws; logs the exception then.
template <class Call>
QorReturnT answerWithoutThrowing(Call const& call) noexcept {
  try {
    return call();
  } catch (...) {
    logException();
    return -1;
  }
}

// The commands of a component and their tree: the part of CommandComponent that
// does not depend on the command types. One call at a time.
class CommandSet {
 public:
  // Adds a command, which is not null. Only before initialise(). Throws Error
  // if another command has the same keyword, in any letter case.
  void add(std::unique_ptr<PipeCommand> command);

  // Builds the tree and registers `component`, which is not owned and must stay
  // valid until terminate(). Returns 0, -1 if the framework has no portal, or
  // the framework's status if it rejects the component. Throws what the
  // framework throws, and std::bad_alloc; may then be called again.
  QorReturnT initialise(QorMgmtSpiInterfacePortalAccessor* accessor,
                        QorMgmtSpiComponent_1* component);

  // Empties the tree, discards all runs and unregisters `component`, in this
  // order. The set can be initialised again. Returns 0. Throws what the
  // framework throws.
  QorReturnT terminate(QorMgmtSpiComponent_1* component);

  // Discards all runs, which print nothing more. Returns 0.
  QorReturnT stop();

  // Answers a call of useModule. Returns the result of answerPipeAction(), or
  // -1 if it throws. A failed execution discards the run of its action.
  QorReturnT answer(CliApiContext& context, PipeAction const& action) noexcept;

  // Finishes the action's runs, now that its input is complete, and emits what
  // they print. Returns 0, or -1 if a command fails or the call cannot be
  // answered. In either case, no run of the action remains.
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
