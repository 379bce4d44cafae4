#include "PipeCmdComp.h"

#include "FilterMap.h"
#include "LineFreeList.h"
#include "OperationTrace.h"
#include "PipeAction.h"
#include "PipeCmdTree.h"
#include "PipeOutput1.h"

namespace QorCliPipe {
namespace {

using QorCliUtilities::CliApiContext;
using QorCliUtilities::OperationTrace;

constexpr QorReturnT kRejected = -1;

}  // namespace

PipeCmdComp::PipeCmdComp() : record_("QorCliPipeCmdComp") {}

char const* PipeCmdComp::moduleName() {
  return OperationTrace().exitWith("QorBasicCommands");
}

QorMgmtSpiComponent_1* PipeCmdComp::getComponent() {
  return OperationTrace().exitWith(record_.get());
}

QorReturnT PipeCmdComp::start(QorStateChangeReason) {
  OperationTrace const trace;
  return trace.exitWith(0);
}

QorReturnT PipeCmdComp::stop(QorStateChangeReason reason) {
  OperationTrace const trace([reason] {
    return "Reason: " + std::to_string(static_cast<int>(reason));
  });
  return trace.exitWith(0);
}

QorReturnT PipeCmdComp::useModule(CliApiContext& context,
                                  QorCliActionEnum_2T action, unsigned actionId,
                                  unsigned* commandMatchCount,
                                  char const* commandLine, char const* input) {
  OperationTrace const trace;
  if (!canAnswer(context, commandMatchCount)) return trace.exitWith(kRejected);
  currentActionId_ = actionId;
  PipeOutput1 output;
  int const status = performPipeAction(
      PipeCmdTree::instance(), context,
      {action, actionId, commandMatchCount, commandLine, input}, output);
  QOR_CLI_TRACE("PipeCmdComp commandMatchCount = %d",
                static_cast<int>(*commandMatchCount));
  if (*commandMatchCount != 0) {
    emitOutput(context, actionId, output.getOutput(), status);
  }
  recycleLines(output.getOutput());
  return trace.exitWith(status);
}

QorReturnT PipeCmdComp::inputComplete(CliApiContext& context, unsigned) {
  OperationTrace const trace;
  if (!canAnswer(context)) return trace.exitWith(kRejected);
  PipeCmd::FilterMap.clear();
  return trace.exitWith(0);
}

}  // namespace QorCliPipe
