#include "PipeCmdComp.h"

#include "CliApiContext5.h"
#include "FilterMap.h"
#include "OperationTrace.h"
#include "PipeCmdTree.h"

namespace QorCliPipe {
namespace {

using QorCliUtilities::AutoCompleteResult;
using QorCliUtilities::CliApiContext;
using QorCliUtilities::CliApiContext5;
using QorCliUtilities::OperationTrace;

constexpr char kComponentName[] = "QorCliPipeCmdComp";
constexpr char kModuleName[] = "QorBasicCommands";
constexpr QorReturnT kRefused = -1;

QorReturnT startComponent(QorStateChangeReason reason) {
  return PipeCmdComp::instance().start(reason);
}

QorReturnT stopComponent(QorStateChangeReason reason) {
  return PipeCmdComp::instance().stop(reason);
}

QorReturnT useModuleOfComponent(QorCliApiContext_5* record, unsigned action,
                                unsigned actionId, unsigned* commandMatchCount,
                                char const* commandLine, char const* input) {
  CliApiContext5 context(record);
  return PipeCmdComp::instance().useModule(context, QorCliActionEnum_2T{action},
                                           actionId, commandMatchCount,
                                           commandLine, input);
}

char const* moduleNameOfComponent() { return kModuleName; }

QorReturnT inputCompleteOfComponent(QorCliApiContext_5* record,
                                    unsigned actionId) {
  CliApiContext5 context(record);
  return PipeCmdComp::instance().inputComplete(context, actionId);
}

char const* orEmpty(char const* text) { return text == nullptr ? "" : text; }

}  // namespace

PipeCmdComp::PipeCmdComp()
    : component_{{kComponentName, "QorMgmtSpiComponent", "1"},
                 providedInterfaces_,
                 dependencies_,
                 startComponent,
                 stopComponent},
      pipeCommands_{{kComponentName, "QorCliApiPipeCommandComponent", "1"},
                    useModuleOfComponent,
                    moduleNameOfComponent,
                    inputCompleteOfComponent},
      logDependency_{nullptr, "QorMwSpiLog", "1"},
      // Any version of the trace interface will do.
      traceDependency_{nullptr, "TavMwSpiTrace", nullptr},
      providedInterfaces_{&pipeCommands_.identity, nullptr},
      dependencies_{&logDependency_, &traceDependency_, nullptr} {}

QorMgmtSpiComponent_1* PipeCmdComp::getComponent() {
  return OperationTrace().exitWith(&component_);
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
  if (!context || commandMatchCount == nullptr) {
    QOR_CLI_LOG_ERROR("Pipe command called without a context or a counter.");
    return trace.exitWith(kRefused);
  }
  currentActionId_ = actionId;
  context.setActionId(actionId);
  PipeOutput1 output;
  int status = 0;
  if (action == QOR_CLI_ACTION_EXECUTE) {
    status = execute(context, orEmpty(commandLine), orEmpty(input),
                     commandMatchCount, output);
  } else if (action == QOR_CLI_ACTION_COMPLETE ||
             action == QOR_CLI_ACTION_HELP) {
    status = offerCandidates(context, action, orEmpty(commandLine), output);
  }
  QOR_CLI_TRACE("PipeCmdComp commandMatchCount = %d",
                static_cast<int>(*commandMatchCount));
  if (*commandMatchCount != 0) emitOutput(context, output.getOutput(), status);
  return trace.exitWith(status);
}

int PipeCmdComp::execute(CliApiContext& context, char const* commandLine,
                         char const* input, unsigned* commandMatchCount,
                         PipeOutput1& output) {
  output.clear();
  output.getOutput().emplace_back(input);
  QOR_CLI_TRACE("Before executeCommand commandMatchCount = %d, actionId = %d",
                static_cast<int>(*commandMatchCount),
                static_cast<int>(currentActionId_));
  int const status = PipeCmdTree::instance().executeCommand(
      context, commandLine, commandMatchCount, output);
  QOR_CLI_TRACE("After executeCommand commandMatchCount = %d, actionId = %d",
                static_cast<int>(*commandMatchCount),
                static_cast<int>(currentActionId_));
  return status;
}

int PipeCmdComp::offerCandidates(CliApiContext& context,
                                 QorCliActionEnum_2T action,
                                 char const* commandLine, PipeOutput1& output) {
  std::vector<AutoCompleteResult> results;
  PipeCmdTree& tree = PipeCmdTree::instance();
  int const status =
      action == QOR_CLI_ACTION_COMPLETE
          ? tree.autoCompleteCommand(context, commandLine, "", results, output)
          : tree.helpRequest(context, commandLine, results, output);
  emitCandidates(context, results);
  return status;
}

void PipeCmdComp::emitCandidates(
    CliApiContext& context, std::vector<AutoCompleteResult> const& results) {
  auto const count = static_cast<unsigned>(results.size());
  for (unsigned i = 0; i < count; ++i) {
    AutoCompleteResult const& result = results[i];
    context.setSortableAutocompleteResult(
        i, count, currentActionId_, result.token, result.completion.c_str(),
        result.help.c_str(), QorCliSortOrderEnum_3T{result.sortIndex.rank},
        result.sortIndex.key.c_str());
  }
}

// A command that failed puts its error text first; nothing else of it is shown.
void PipeCmdComp::emitOutput(CliApiContext& context,
                             std::vector<std::string> const& lines,
                             int status) {
  auto const count = static_cast<unsigned>(lines.size());
  for (unsigned i = 0; i < count; ++i) {
    if (lines[i].empty()) continue;
    context.setOutput(i, count, currentActionId_, lines[i].c_str());
    if (status != 0) return;
  }
}

QorReturnT PipeCmdComp::inputComplete(CliApiContext& context, unsigned) {
  OperationTrace const trace;
  if (!context) {
    QOR_CLI_LOG_ERROR("Input completed without a context.");
    return trace.exitWith(kRefused);
  }
  PipeCmd::FilterMap.clear();
  return trace.exitWith(0);
}

}  // namespace QorCliPipe
