#include "CommandSet.h"

#include <Poco/String.h>

#include <utility>

#include "Error.h"
#include "OperationTrace.h"
#include "PipeText.h"

namespace QorCliUtilities {
namespace {

constexpr QorReturnT kRejected = -1;

}  // namespace

void logException() noexcept {
  try {
    QOR_CLI_LOG_ERROR(reasonOfException().c_str());
  } catch (...) {
    return;
  }
}

void CommandSet::add(std::unique_ptr<PipeCommand> command) {
  std::string const keyword = command->name();
  for (auto const& other : commands_) {
    if (Poco::icompare(keyword, other->name()) != 0) continue;
    throw Error("Two commands have the keyword " + keyword, 0);
  }
  commands_.push_back(std::move(command));
}

QorReturnT CommandSet::initialise(QorMgmtSpiInterfacePortalAccessor* accessor,
                                  QorMgmtSpiComponent_1* component) {
  OperationTrace const trace;
  fillTree();
  QorReturnT const fetched = portal_.fetch(accessor);
  if (fetched != 0) return trace.exitWith(fetched);
  QorReturnT const status = portal_.registerComponent(component);
  if (status != 0) QOR_CLI_LOG_ERROR("Could not register component.");
  return trace.exitWith(status);
}

QorReturnT CommandSet::terminate(QorMgmtSpiComponent_1* component) {
  OperationTrace const trace;
  tree_.deleteTree();
  stop();
  portal_.unregisterComponent(component);
  return trace.exitWith(0);
}

QorReturnT CommandSet::stop() {
  OperationTrace const trace;
  for (auto const& command : commands_) command->forgetRuns();
  return trace.exitWith(0);
}

QorReturnT CommandSet::answer(CliApiContext& context,
                              PipeAction const& action) noexcept {
  OperationTrace const trace;
  QorReturnT const status =
      canAnswer(context, action.commandMatchCount) ? answerWithoutThrowing([&] {
        return answerPipeAction(tree_, context, action);
      })
                                                   : kRejected;
  if (status != 0 && action.kind == QOR_CLI_ACTION_EXECUTE) {
    forgetRun(action.id);
  }
  return trace.exitWith(status);
}

QorReturnT CommandSet::complete(CliApiContext& context,
                                unsigned actionId) noexcept {
  OperationTrace const trace;
  QorReturnT result = canAnswer(context) ? 0 : kRejected;
  if (result == 0) {
    for (auto const& command : commands_) {
      QorReturnT const status = answerWithoutThrowing([&] {
        LinesOutput output;
        int const completed = command->complete(actionId, output);
        emitOutput(context, actionId, output.getOutput(), completed);
        return completed;
      });
      if (status != 0) result = status;
    }
  }
  forgetRun(actionId);
  return trace.exitWith(result);
}

// A partly built tree must not pass for a complete one.
void CommandSet::fillTree() {
  if (tree_.readyForUse()) return;
  try {
    for (auto const& command : commands_) command->addTo(tree_);
  } catch (...) {
    tree_.deleteTree();
    throw;
  }
}

void CommandSet::forgetRun(unsigned actionId) {
  for (auto const& command : commands_) command->forgetRun(actionId);
}

}  // namespace QorCliUtilities
