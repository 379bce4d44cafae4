#ifndef QOR_CLI_PIPE_CMD_COMP_H
#define QOR_CLI_PIPE_CMD_COMP_H

#include <string>
#include <vector>

#include "CliApiContext.h"
#include "PipeComponentRecord.h"
#include "QorMgmtSpi.h"
#include "QorSingleton.h"

namespace QorCliPipe {

// The component that the plug-in registers. It dispatches CLI actions to the
// command tree. Not locked: the engine makes one call at a time.
class PipeCmdComp : public Qor::Singleton<PipeCmdComp> {
 public:
  PipeCmdComp();

  // The component record, never null. Owned by the component, valid and
  // constant for its lifetime.
  QorMgmtSpiComponent_1* getComponent();

  // The name of the command module.
  static char const* moduleName();

  // Do nothing and return 0. `reason` is only traced.
  QorReturnT start(QorStateChangeReason reason);
  QorReturnT stop(QorStateChangeReason reason);

  // Performs an action for the pipe command line `commandLine`. A null
  // `commandLine` or `input` means empty. To execute, runs the command over
  // `input` and, if one was run, sends its output to the context: all lines
  // that are not empty, or only the first of them if the command failed. For
  // completion and help, sends the candidates. Ignores other actions.
  //
  // Returns the status of the command tree. If the context has no record or
  // `commandMatchCount` is null, logs an error and returns -1. Exceptions of
  // the tree propagate.
  QorReturnT useModule(QorCliUtilities::CliApiContext& context,
                       QorCliActionEnum_2T action, unsigned actionId,
                       unsigned* commandMatchCount, char const* commandLine,
                       char const* input);

  // The input of an action is complete: clears the commands' state of all
  // actions. Returns 0, or -1 as above if the context has no record.
  QorReturnT inputComplete(QorCliUtilities::CliApiContext& context,
                           unsigned actionId);

 private:
  QorCliUtilities::PipeComponentRecord<PipeCmdComp> record_;
  unsigned currentActionId_ = 0;
  // Unused; part of the component's layout.
  [[maybe_unused]] std::vector<std::string> strings_;
  [[maybe_unused]] unsigned reserved_ = 0;
};

}  // namespace QorCliPipe

#endif
