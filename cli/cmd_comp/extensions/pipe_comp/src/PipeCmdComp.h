#ifndef QOR_CLI_PIPE_CMD_COMP_H
#define QOR_CLI_PIPE_CMD_COMP_H

#include <string>
#include <vector>

#include "CliApiContext.h"
#include "PipeComponentRecord.h"
#include "QorMgmtSpi.h"
#include "QorSingleton.h"

namespace QorCliPipe {

// The component that the plug-in registers: to the framework a record of
// identities and functions, inside it the dispatch of each CLI action to the
// command tree. Takes no lock: the engine calls it one call at a time.
class PipeCmdComp : public Qor::Singleton<PipeCmdComp> {
 public:
  PipeCmdComp();

  // The component record, never null. Owned by the component, valid and
  // unchanged as long as it.
  QorMgmtSpiComponent_1* getComponent();

  // The name of the command module.
  static char const* moduleName();

  // Start and stop do nothing and return 0. `reason` is only traced.
  QorReturnT start(QorStateChangeReason reason);
  QorReturnT stop(QorStateChangeReason reason);

  // Performs one action for the pipe command text `commandLine`; a null text is
  // read as empty, and so is a null `input`. Executing, `input` is the text to
  // work on, and the lines that the command printed go to the context when the
  // command was run: all that are not empty, or the first of them when the
  // command failed. Completing and helping, the candidates go to the context.
  // Other actions do nothing.
  //
  // Returns the status of the command tree, or -1, with an error in the system
  // log and nothing called, when the context has no record or
  // `commandMatchCount` is null. Exceptions of the tree are passed on.
  QorReturnT useModule(QorCliUtilities::CliApiContext& context,
                       QorCliActionEnum_2T action, unsigned actionId,
                       unsigned* commandMatchCount, char const* commandLine,
                       char const* input);

  // Says that the input of an action is complete: forgets what commands have
  // kept from call to call, of every action. Returns 0, or -1 as above when the
  // context has no record.
  QorReturnT inputComplete(QorCliUtilities::CliApiContext& context,
                           unsigned actionId);

 private:
  QorCliUtilities::PipeComponentRecord<PipeCmdComp> record_;
  unsigned currentActionId_ = 0;
  // Part of the component's layout, not used by its operations.
  [[maybe_unused]] std::vector<std::string> strings_;
  [[maybe_unused]] unsigned reserved_ = 0;
};

}  // namespace QorCliPipe

#endif
