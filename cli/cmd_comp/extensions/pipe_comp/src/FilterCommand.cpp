#include "FilterCommand.h"

#include <cstdio>
#include <memory>

#include "ACFilterOptions.h"
#include "ACPipeKeyword.h"
#include "ContextRules.h"
#include "FilterMap.h"
#include "OperationTrace.h"
#include "PipeCmdTree.h"

namespace QorCliPipe {
namespace {

using QorCliUtilities::AutoCompleteNode;
using QorCliUtilities::OperationTrace;

constexpr std::size_t kErrorBufferSize = 2000;  // bytes, the final NUL included
constexpr int kFailure = -1;

// Empties `strings` and returns their texts as one.
std::string takeText(std::vector<std::string>& strings) {
  std::string text;
  if (!strings.empty()) text = std::move(strings.front());
  for (std::size_t i = 1; i < strings.size(); ++i) text += strings[i];
  strings.clear();
  return text;
}

std::string errorLine(std::string const& text) {
  char buffer[kErrorBufferSize];
  std::snprintf(buffer, sizeof buffer, "ERROR: %s", text.c_str());
  return buffer;
}

}  // namespace

FilterCommand::FilterCommand() : AbstractCommand("Filter") {
  OperationTrace const trace;
  std::set<unsigned> const modes{QOR_CLI_MODE_ANY};
  auto keyword = std::make_unique<QorCliUtilities::ACPipeKeyword>(
      "filter", "Print lines matching a pattern", modes, false);
  auto options = std::make_unique<ACFilterOptions>(
      modes, QorCliUtilities::VALIDATION_NONE, true);
  auto command = std::make_unique<AutoCompleteNode>(this);
  std::vector<AutoCompleteNode*> path{keyword.get(), options.get(),
                                      command.get()};
  // The tree owns the nodes from here on, whatever comes of the call.
  static_cast<void>(keyword.release());
  static_cast<void>(options.release());
  static_cast<void>(command.release());
  PipeCmdTree::instance().addPathToTree(path);
  trace.exit();
}

int FilterCommand::execute(QorCliUtilities::CliApiContext& context,
                           std::vector<std::string> const& tokens,
                           QorCliUtilities::IOutput& output) {
  OperationTrace const trace;
  std::vector<std::string>& kept = output.getOutput();
  std::string const text = takeText(kept);
  FilterArguments arguments;
  std::string const error = parseFilterArguments(tokens, arguments);
  if (!error.empty()) {
    PipeCmd::FilterMap.clear();
    output.push_back(errorLine(error));
    return trace.exitWith(kFailure);
  }
  try {
    filterLines(text, arguments, context.getActionId(), kept);
  } catch (Poco::Exception const&) {
    PipeCmd::FilterMap.clear();
    // Matching may have taken much memory before it gave up.
    lastFilter_.reset();
    return trace.exitWith(kFailure);
  }
  return trace.exitWith(0);
}

// The expression is compiled and the action's state looked up when there is a
// line: without one, neither happens.
void FilterCommand::filterLines(std::string_view text,
                                FilterArguments const& arguments,
                                unsigned actionId,
                                std::vector<std::string>& kept) {
  if (text.find('\n') == std::string_view::npos) return;
  if (!lastFilter_ ||
      !lastFilter_->isFor(arguments.pattern, arguments.ignoreCase)) {
    lastFilter_ =
        std::make_unique<LineFilter>(arguments.pattern, arguments.ignoreCase);
  }
  ContextRules rules(arguments.after, arguments.before,
                     PipeCmd::FilterMap[actionId], kept);
  lastFilter_->filter(text, arguments.invert, rules);
}

bool FilterCommand::isNumber(std::string const& text) {
  return OperationTrace().exitWith(isDecimalNumber(text));
}

}  // namespace QorCliPipe
