#include "FilterCommand.h"

#include <cstdio>
#include <memory>
#include <new>

#include "ACFilterOptions.h"
#include "ACPipeKeyword.h"
#include "ContextRules.h"
#include "FilterMap.h"
#include "OperationTrace.h"
#include "PipeCmdTree.h"
#include "PipeText.h"

namespace QorCliPipe {
namespace {

using QorCliMatching::LineFilter;
using QorCliMatching::PatternError;
using QorCliUtilities::AutoCompleteNode;
using QorCliUtilities::OperationTrace;

constexpr int kFailure = -1;

// `text` in printable ASCII, truncated.
std::string printable(std::string_view text) {
  constexpr std::size_t max = 100;  // bytes
  std::string result;
  for (char const c : text.substr(0, max)) {
    auto const byte = static_cast<unsigned char>(c);
    char escape[sizeof "\\xNN"];
    std::snprintf(escape, sizeof escape, "\\x%02X", unsigned{byte});
    bool const isPrintable = byte >= 0x20 && byte < 0x7F;
    isPrintable ? result += c : result += escape;
  }
  return text.size() > max ? result + "..." : result;
}

// Drops the record if memory runs out.
void logReason(PatternError const& error, std::string const& pattern) {
  try {
    QOR_CLI_LOG_ERROR(
        ("Filter pattern \"" + printable(pattern) + "\": " + error.what() + '.')
            .c_str());
  } catch (std::bad_alloc const&) {
    return;
  }
}

}  // namespace

FilterCommand::FilterCommand() : AbstractCommand("Filter") {
  OperationTrace const trace;
  std::set<unsigned> const modes{QOR_CLI_MODE_ANY};
  PipeCmdTree::instance().addPathToTree(
      std::make_unique<QorCliUtilities::ACPipeKeyword>(
          "filter", "Print lines matching a pattern", modes, false),
      std::make_unique<ACFilterOptions>(modes, QorCliUtilities::VALIDATION_NONE,
                                        true),
      std::make_unique<AutoCompleteNode>(this));
  trace.exit();
}

int FilterCommand::execute(QorCliUtilities::CliApiContext& context,
                           std::vector<std::string> const& tokens,
                           QorCliUtilities::IOutput& output) {
  OperationTrace const trace;
  std::vector<std::string>& kept = output.getOutput();
  std::string const text = QorCliUtilities::takeText(kept);
  FilterArguments arguments;
  std::string const error = parseFilterArguments(tokens, arguments);
  if (!error.empty()) {
    PipeCmd::FilterMap.clear();
    output.push_back(QorCliUtilities::errorLine(error));
    return trace.exitWith(kFailure);
  }
  try {
    filterLines(text, arguments, context.getActionId(), kept);
  } catch (PatternError const& reason) {
    logReason(reason, arguments.pattern);
    PipeCmd::FilterMap.clear();
    return trace.exitWith(kFailure);
  }
  return trace.exitWith(0);
}

// Without a line, neither compiles the pattern nor creates a state for the
// action. A filter that throws is not used again.
void FilterCommand::filterLines(std::string_view text,
                                FilterArguments const& arguments,
                                unsigned actionId,
                                std::vector<std::string>& kept) {
  if (text.find('\n') == std::string_view::npos) return;
  std::unique_ptr<LineFilter> filter = std::move(lastFilter_);
  if (!filter || !filter->isFor(arguments.pattern, arguments.ignoreCase)) {
    filter.reset();
    filter =
        std::make_unique<LineFilter>(arguments.pattern, arguments.ignoreCase);
  }
  ContextRules rules(arguments.after, arguments.before,
                     PipeCmd::FilterMap[actionId], kept);
  filter->filter(text, arguments.invert, rules);
  lastFilter_ = std::move(filter);
}

bool FilterCommand::isNumber(std::string const& text) {
  return OperationTrace().exitWith(QorCliUtilities::isDecimalNumber(text));
}

}  // namespace QorCliPipe
