#ifndef QOR_CLI_PIPE_COMMAND_H
#define QOR_CLI_PIPE_COMMAND_H

#include <cstddef>

#include "QorCliApiContext.h"
#include "QorMgmtSpi.h"

extern "C" {

// The interface "QorCliApiPipeCommandComponent", version "1", by which the CLI
// engine calls pipe commands. One call at a time, from any thread.
struct QorCliApiPipeCommandComponent_1 {
  QorMgmtSpiInterface_1 identity;

  // Performs `action` (QorCliActionEnum_2T) for the pipe command line
  // `commandLine`. `input` is output of the preceding command: whole lines,
  // each with its line feed. Long input arrives in several calls with the same
  // `actionId`. It may be empty: an engine may start a command with such a
  // call, to learn from `*commandMatchCount` whether the component has the
  // command, and may then leave it at that: a command must have no lasting
  // effect before there is input. Output and candidates are sent through
  // `context`.
  // `*commandMatchCount`, which the engine sets to 0, is incremented for each
  // command that is run. Texts are only read during the call. Returns 0, or the
  // status of the failed command.
  QorReturnT (*useModule)(QorCliApiContext_5* context, unsigned action,
                          unsigned actionId, unsigned* commandMatchCount,
                          char const* commandLine, char const* input);

  // Returns the name of the command module. Static text, never null.
  char const* (*moduleName)();

  // The input of `actionId` is complete; also called after a failure. The
  // component may still send output. Returns 0 on success.
  QorReturnT (*inputComplete)(QorCliApiContext_5* context, unsigned actionId);
};

}  // extern "C"

static_assert(offsetof(QorCliApiPipeCommandComponent_1, useModule) ==
              3 * sizeof(void*));
static_assert(offsetof(QorCliApiPipeCommandComponent_1, moduleName) ==
              4 * sizeof(void*));
static_assert(offsetof(QorCliApiPipeCommandComponent_1, inputComplete) ==
              5 * sizeof(void*));

#endif
