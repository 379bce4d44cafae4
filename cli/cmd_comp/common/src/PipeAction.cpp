#include "PipeAction.h"

#include "LinesOutput.h"
#include "OperationTrace.h"
#include "OrEmpty.h"

namespace QorCliUtilities {
namespace {

constexpr int kRejected = -1;

int runCommandLine(AutoCompleteTree& tree, CliApiContext& context,
                   PipeAction const& action, LinesOutput& output) {
  output.clear();
  output.getOutput().emplace_back(orEmpty(action.input));
  QOR_CLI_TRACE("Before executeCommand commandMatchCount = %d, actionId = %d",
                static_cast<int>(*action.commandMatchCount),
                static_cast<int>(action.id));
  int const status = tree.executeCommand(context, orEmpty(action.commandLine),
                                         action.commandMatchCount, output);
  QOR_CLI_TRACE("After executeCommand commandMatchCount = %d, actionId = %d",
                static_cast<int>(*action.commandMatchCount),
                static_cast<int>(action.id));
  return status;
}

void emitCandidates(CliApiContext& context, unsigned actionId,
                    std::vector<AutoCompleteResult> const& results) {
  auto const count = static_cast<unsigned>(results.size());
  for (unsigned i = 0; i < count; ++i) {
    AutoCompleteResult const& result = results[i];
    context.setSortableAutocompleteResult(
        i, count, actionId, result.token, result.completion.c_str(),
        result.help.c_str(), QorCliSortOrderEnum_3T{result.sortIndex.rank},
        result.sortIndex.key.c_str());
  }
}

int offerCandidates(AutoCompleteTree& tree, CliApiContext& context,
                    PipeAction const& action, IOutput& output) {
  std::vector<AutoCompleteResult> results;
  char const* const line = orEmpty(action.commandLine);
  int const status =
      action.kind == QOR_CLI_ACTION_COMPLETE
          ? tree.autoCompleteCommand(context, line, "", results, output)
          : tree.helpRequest(context, line, results, output);
  emitCandidates(context, action.id, results);
  return status;
}

}  // namespace

bool canAnswer(CliApiContext const& context, unsigned const* commandMatchCount,
               char const* file, char const* function, unsigned line) {
  if (context && commandMatchCount != nullptr) return true;
  logError("Pipe command called without a context or a counter.", file,
           function, line);
  return false;
}

bool canAnswer(CliApiContext const& context, char const* file,
               char const* function, unsigned line) {
  if (context) return true;
  logError("Input completed without a context.", file, function, line);
  return false;
}

int answerPipeAction(AutoCompleteTree& tree, CliApiContext& context,
                     PipeAction const& action, char const* file,
                     char const* function, unsigned line) {
  if (!canAnswer(context, action.commandMatchCount, file, function, line)) {
    return kRejected;
  }
  LinesOutput output;
  int const status = performPipeAction(tree, context, action, output);
  if (*action.commandMatchCount != 0) {
    emitOutput(context, action.id, output.getOutput(), status);
  }
  return status;
}

int performPipeAction(AutoCompleteTree& tree, CliApiContext& context,
                      PipeAction const& action, LinesOutput& output) {
  context.setActionId(action.id);
  switch (action.kind) {
    case QOR_CLI_ACTION_EXECUTE:
      return runCommandLine(tree, context, action, output);
    case QOR_CLI_ACTION_COMPLETE:
    case QOR_CLI_ACTION_HELP:
      return offerCandidates(tree, context, action, output);
  }
  return 0;
}

void emitOutput(CliApiContext& context, unsigned actionId,
                std::vector<std::string> const& lines, int status) {
  auto const count = static_cast<unsigned>(lines.size());
  for (unsigned i = 0; i < count; ++i) {
    if (lines[i].empty()) continue;
    context.setOutput(i, count, actionId, lines[i].c_str());
    if (status != 0) return;
  }
}

}  // namespace QorCliUtilities
