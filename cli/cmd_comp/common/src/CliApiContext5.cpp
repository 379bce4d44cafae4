#include "CliApiContext5.h"

#include <memory>
#include <stdexcept>

#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

constexpr QorReturnT kNotSupported = -1;

template <class Function, class... Arguments>
QorReturnT forward(Function function, QorCliApiContext_5* record,
                   Arguments... arguments) {
  return function == nullptr ? kNotSupported : function(record, arguments...);
}

[[noreturn]] void throwNotImplemented(char const* operation) {
  throw std::runtime_error(
      std::string(operation) +
      "() is not implemented for this version of CLI API context!");
}

}  // namespace

CliApiContext5::CliApiContext5(QorCliApiContext_5* record) : record_(record) {}

QorCliApiContext_5 const* CliApiContext5::get_v5() const {
  return OperationTrace().exitWith(record_);
}

QorCliApiContext_5* CliApiContext5::get_v5() {
  return OperationTrace().exitWith(record_);
}

CliApiContext5::operator bool() const {
  OperationTrace const trace;
  return trace.exitWith(get_v5() != nullptr);
}

unsigned CliApiContext5::getActionId() const {
  return OperationTrace().exitWith(actionId_);
}

void CliApiContext5::setActionId(unsigned actionId) {
  OperationTrace const trace;
  actionId_ = actionId;
  trace.exit();
}

QorReturnT CliApiContext5::setCursor(char const* cursor) {
  OperationTrace const trace;
  return trace.exitWith(forward(record_->setCursor, record_, cursor));
}

char const* CliApiContext5::getPrompt() const {
  return OperationTrace().exitWith(record_->prompt);
}

QorReturnT CliApiContext5::setPrompt() {
  OperationTrace const trace;
  if (record_->setPrompt == nullptr) return trace.exitWith(kNotSupported);
  if (!promptPending_) return trace.exitWith(0);
  QorReturnT const status = record_->setPrompt(record_, promptString_.c_str());
  if (status == 0) promptPending_ = false;
  return trace.exitWith(status);
}

void CliApiContext5::setPromptString(char const* prompt) {
  OperationTrace const trace;
  promptString_ = prompt == nullptr ? "" : prompt;
  promptPending_ = true;
  trace.exit();
}

QorReturnT CliApiContext5::setOutput(unsigned index, unsigned count,
                                     unsigned actionId, char const* text) {
  OperationTrace const trace;
  return trace.exitWith(
      forward(record_->setOutput, record_, index, count, actionId, text));
}

QorReturnT CliApiContext5::setAutocompleteResult(unsigned index, unsigned count,
                                                 unsigned actionId,
                                                 QorCliCompletionToken_1T token,
                                                 char const* completion,
                                                 char const* help) {
  OperationTrace const trace;
  return trace.exitWith(forward(record_->setAutocompleteResult, record_, index,
                                count, actionId, token, completion, help));
}

QorReturnT CliApiContext5::sessionShutdown(unsigned reason) {
  OperationTrace const trace;
  return trace.exitWith(forward(record_->sessionShutdown, record_, reason));
}

QorReturnT CliApiContext5::setSortableAutocompleteResult(
    unsigned index, unsigned count, unsigned actionId,
    QorCliCompletionToken_1T token, char const* completion, char const* help,
    QorCliSortOrderEnum_3T sortOrder, char const* sortKey) {
  OperationTrace const trace;
  return trace.exitWith(forward(record_->setSortableAutocompleteResult, record_,
                                index, count, actionId, token, completion, help,
                                sortOrder, sortKey));
}

unsigned CliApiContext5::getSessionId() const {
  return OperationTrace().exitWith(record_->sessionId);
}

unsigned long CliApiContext5::getTxHandle() const {
  return OperationTrace().exitWith(record_->transactionHandle);
}

void CliApiContext5::setTxHandle(unsigned long handle) {
  OperationTrace const trace;
  record_->transactionHandle = handle;
  trace.exit();
}

QorCliModeEnum_1T CliApiContext5::getMode() const {
  return OperationTrace().exitWith(record_->mode);
}

void CliApiContext5::setMode(QorCliModeEnum_1T mode) {
  OperationTrace const trace;
  record_->mode = mode;
  trace.exit();
}

char const* CliApiContext5::getLoginName() const {
  return OperationTrace().exitWith(record_->loginName);
}

char const* CliApiContext5::getCursor() const {
  return OperationTrace().exitWith(record_->cursor);
}

std::uint64_t CliApiContext5::getAuthHandle() const {
  return OperationTrace().exitWith(record_->authorisationHandle);
}

unsigned CliApiContext5::getTimeout() const {
  return OperationTrace().exitWith(record_->timeout);
}

bool CliApiContext5::getExclusiveUse() const {
  return OperationTrace().exitWith(record_->exclusiveUse);
}

void CliApiContext5::setExclusiveUse(bool exclusive) {
  OperationTrace const trace;
  record_->exclusiveUse = exclusive;
  trace.exit();
}

QorCliLockEnum_1T CliApiContext5::getLock() const {
  return OperationTrace().exitWith(record_->lock);
}

QorReturnT CliApiContext5::setLock(QorCliLockEnum_1T lock) {
  OperationTrace const trace;
  return trace.exitWith(forward(record_->setLock, record_, lock));
}

Poco::SharedPtr<CliApiContext> CliApiContext5::clone() const {
  OperationTrace const trace;
  auto copy = std::make_unique<CliApiContext5>(record_);
  copy->setActionId(actionId_);
  // SharedPtr leaks its argument if it cannot allocate its counter.
  Poco::SharedPtr<CliApiContext> shared(copy.get());
  static_cast<void>(copy.release());
  trace.exit();
  return shared;
}

void CliApiContext5::setLastStatus(QorReturnT status) {
  OperationTrace const trace;
  record_->lastStatus = status;
  trace.exit();
}

QorReturnT CliApiContext5::getLastStatus() const {
  return OperationTrace().exitWith(record_->lastStatus);
}

QorReturnT CliApiContext5::getSessionProperties(
    unsigned, std::vector<SessionProperty>&) const {
  OperationTrace const trace;
  throwNotImplemented("getSessionProperties");
}

QorReturnT CliApiContext5::setSessionProperties(
    unsigned, std::vector<SessionProperty> const&) {
  OperationTrace const trace;
  throwNotImplemented("setSessionProperties");
}

QorReturnT CliApiContext5::printHistory(unsigned, long long) {
  OperationTrace const trace;
  throwNotImplemented("printHistory");
}

QorReturnT CliApiContext5::setPartialLineOutput(unsigned, unsigned, unsigned,
                                                char const*) {
  OperationTrace const trace;
  throwNotImplemented("setPartialLineOutput");
}

QorReturnT CliApiContext5::setConditionalOutput(unsigned, unsigned, unsigned,
                                                char const*) {
  OperationTrace const trace;
  throwNotImplemented("setConditionalOutput");
}

QorReturnT CliApiContext5::setCompletion(unsigned,
                                         QorCliCompletionData_1T const&) {
  OperationTrace const trace;
  throwNotImplemented("setCompletion");
}

QorReturnT CliApiContext5::setCompletionAndPrompt(
    unsigned, QorCliCompletionData_1T const&,
    QorCliPasswordPromptData_1T const&) {
  OperationTrace const trace;
  throwNotImplemented("setCompletionAndPrompt");
}

}  // namespace QorCliUtilities
