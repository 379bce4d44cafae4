#ifndef QOR_CLI_PIPE_COMMAND_H
#define QOR_CLI_PIPE_COMMAND_H

#include <cstddef>

#include "QorCliApiContext.h"
#include "QorMgmtSpi.h"

extern "C" {

// The interface "QorCliApiPipeCommandComponent", version "1": pipe commands, as
// the CLI engine calls them. One call at a time, from any thread.
struct QorCliApiPipeCommandComponent_1 {
  QorMgmtSpiInterface_1 identity;

  // Performs `action` (QorCliActionEnum_2T) for the pipe command line
  // `commandLine`. `input` is text that the preceding command printed: whole
  // lines, each with its line feed. Long input comes in several calls with one
  // `actionId`. It may be empty: an engine may open a command with such a call,
  // to learn from `*commandMatchCount` whether the component knows it. Output
  // and candidates are answered through `context`.
  // `*commandMatchCount` is raised by one for each command that was run; the
  // engine sets it to 0 beforehand. Texts are only read during the call.
  // Returns 0, or the failure of the command.
  QorReturnT (*useModule)(QorCliApiContext_5* context, unsigned action,
                          unsigned actionId, unsigned* commandMatchCount,
                          char const* commandLine, char const* input);

  // Returns the name of the command module. Static text, never null.
  char const* (*moduleName)();

  // Says that the input of `actionId` has been delivered completely, also after
  // a failure. A component may still answer output.
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
