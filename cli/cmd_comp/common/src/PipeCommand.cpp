#include "PipeCommand.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "ACOptions.h"
#include "ACPipeKeyword.h"
#include "Error.h"
#include "OperationTrace.h"
#include "PipeText.h"

namespace QorCliUtilities {
namespace {

constexpr int kFailure = -1;

}  // namespace

PipeCommand::PipeCommand(CommandSyntax syntax, Begin begin)
    : AbstractCommand(syntax.keyword.c_str()),
      keyword_(std::move(syntax.keyword)),
      help_(std::move(syntax.help)),
      modes_(std::move(syntax.modes)),
      grammar_(std::move(syntax.options), std::move(syntax.arguments)),
      begin_(std::move(begin)) {}

void PipeCommand::addTo(AutoCompleteTree& tree) {
  OperationTrace const trace;
  auto const keyword = [this](bool lineMayEnd) {
    return std::make_unique<ACPipeKeyword>(keyword_, help_, modes_, lineMayEnd);
  };
  auto const end = [this] { return std::make_unique<AutoCompleteNode>(this); };
  tree.addPathToTree(
      keyword(false),
      std::make_unique<ACOptions>(grammar_, modes_, VALIDATION_NONE, true),
      end());
  if (grammar_.allowsNoWord()) tree.addPathToTree(keyword(true), end());
  trace.exit();
}

int PipeCommand::execute(CliApiContext& context,
                         std::vector<std::string> const& tokens,
                         IOutput& output) {
  OperationTrace const trace;
  unsigned const actionId = context.getActionId();
  std::string const chunk = takeText(output.getOutput());
  return trace.exitWith(perform(actionId, output, [&](Printer& printer) {
    Run& run = runOf(actionId, tokens);
    run.cutter.add(chunk, *run.processor, printer);
  }));
}

int PipeCommand::complete(unsigned actionId, IOutput& output) {
  OperationTrace const trace;
  auto const ended = runs_.find(actionId);
  if (ended == runs_.end()) return trace.exitWith(0);
  int const status = perform(actionId, output, [&](Printer& printer) {
    ended->second.cutter.finish(*ended->second.processor, printer);
  });
  runs_.erase(actionId);
  return trace.exitWith(status);
}

void PipeCommand::forgetRun(unsigned actionId) {
  OperationTrace const trace;
  runs_.erase(actionId);
  trace.exit();
}

void PipeCommand::forgetRuns() {
  OperationTrace const trace;
  runs_.clear();
  trace.exit();
}

// A failure discards what the run has printed in this call: the engine shows
// only one string of a failed call, the error text.
template <class Work>
int PipeCommand::perform(unsigned actionId, IOutput& output, Work const& work) {
  std::vector<std::string> printed;
  std::string reason;
  try {
    Printer printer(printed);
    work(printer);
    std::move(printed.begin(), printed.end(),
              std::back_inserter(output.getOutput()));
    return 0;
  } catch (...) {
    reason = reasonOfException();
  }
  runs_.erase(actionId);
  output.push_back(errorLine(reason + '\n'));
  return kFailure;
}

PipeCommand::Run& PipeCommand::runOf(unsigned actionId,
                                     std::vector<std::string> const& tokens) {
  auto const known = runs_.find(actionId);
  if (known != runs_.end()) return known->second;
  Arguments arguments;
  if (Problem const problem = grammar_.parse(tokens, arguments)) {
    throw Error(problem.text, 0);
  }
  return runs_.emplace(actionId, Run{begin_(arguments), {}}).first->second;
}

}  // namespace QorCliUtilities
