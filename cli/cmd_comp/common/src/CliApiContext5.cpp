#include "CliApiContext5.h"

#include <memory>
#include <stdexcept>

namespace QorCliUtilities {
namespace {

constexpr QorReturnT kNotOffered = -1;

template <class Function, class... Arguments>
QorReturnT forward(Function function, QorCliApiContext_5* record,
                   Arguments... arguments) {
  return function == nullptr ? kNotOffered : function(record, arguments...);
}

[[noreturn]] void throwNotImplemented(char const* operation) {
  throw std::runtime_error(
      std::string(operation) +
      "() is not implemented for this version of CLI API context!");
}

}  // namespace

CliApiContext5::CliApiContext5(QorCliApiContext_5* record) : record_(record) {}

QorCliApiContext_5 const* CliApiContext5::get_v5() const { return record_; }
QorCliApiContext_5* CliApiContext5::get_v5() { return record_; }
CliApiContext5::operator bool() const { return get_v5() != nullptr; }

unsigned CliApiContext5::getActionId() const { return actionId_; }
void CliApiContext5::setActionId(unsigned actionId) { actionId_ = actionId; }

QorReturnT CliApiContext5::setCursor(char const* cursor) {
  return forward(record_->setCursor, record_, cursor);
}

char const* CliApiContext5::getPrompt() const { return record_->prompt; }

QorReturnT CliApiContext5::setPrompt() {
  if (record_->setPrompt == nullptr) return kNotOffered;
  if (!promptPending_) return 0;
  QorReturnT const status = record_->setPrompt(record_, promptString_.c_str());
  if (status == 0) promptPending_ = false;
  return status;
}

void CliApiContext5::setPromptString(char const* prompt) {
  promptString_ = prompt == nullptr ? "" : prompt;
  promptPending_ = true;
}

QorReturnT CliApiContext5::setOutput(unsigned index, unsigned count,
                                     unsigned actionId, char const* text) {
  return forward(record_->setOutput, record_, index, count, actionId, text);
}

QorReturnT CliApiContext5::setAutocompleteResult(unsigned index, unsigned count,
                                                 unsigned actionId,
                                                 QorCliCompletionToken_1T token,
                                                 char const* completion,
                                                 char const* help) {
  return forward(record_->setAutocompleteResult, record_, index, count,
                 actionId, token, completion, help);
}

QorReturnT CliApiContext5::sessionShutdown(unsigned reason) {
  return forward(record_->sessionShutdown, record_, reason);
}

QorReturnT CliApiContext5::setSortableAutocompleteResult(
    unsigned index, unsigned count, unsigned actionId,
    QorCliCompletionToken_1T token, char const* completion, char const* help,
    QorCliSortOrderEnum_3T sortOrder, char const* sortKey) {
  return forward(record_->setSortableAutocompleteResult, record_, index, count,
                 actionId, token, completion, help, sortOrder, sortKey);
}

unsigned CliApiContext5::getSessionId() const { return record_->sessionId; }

unsigned long CliApiContext5::getTxHandle() const {
  return record_->transactionHandle;
}

void CliApiContext5::setTxHandle(unsigned long handle) {
  record_->transactionHandle = handle;
}

QorCliModeEnum_1T CliApiContext5::getMode() const { return record_->mode; }
void CliApiContext5::setMode(QorCliModeEnum_1T mode) { record_->mode = mode; }

char const* CliApiContext5::getLoginName() const { return record_->loginName; }
char const* CliApiContext5::getCursor() const { return record_->cursor; }

std::uint64_t CliApiContext5::getAuthHandle() const {
  return record_->authorisationHandle;
}

unsigned CliApiContext5::getTimeout() const { return record_->timeout; }

bool CliApiContext5::getExclusiveUse() const { return record_->exclusiveUse; }

void CliApiContext5::setExclusiveUse(bool exclusive) {
  record_->exclusiveUse = exclusive;
}

QorCliLockEnum_1T CliApiContext5::getLock() const { return record_->lock; }

QorReturnT CliApiContext5::setLock(QorCliLockEnum_1T lock) {
  return forward(record_->setLock, record_, lock);
}

Poco::SharedPtr<CliApiContext> CliApiContext5::clone() const {
  auto copy = std::make_unique<CliApiContext5>(record_);
  copy->setActionId(actionId_);
  // SharedPtr does not free its argument when it cannot allocate its counter.
  Poco::SharedPtr<CliApiContext> shared(copy.get());
  static_cast<void>(copy.release());
  return shared;
}

void CliApiContext5::setLastStatus(QorReturnT status) {
  record_->lastStatus = status;
}

QorReturnT CliApiContext5::getLastStatus() const { return record_->lastStatus; }

QorReturnT CliApiContext5::getSessionProperties(
    unsigned, std::vector<SessionProperty>&) const {
  throwNotImplemented("getSessionProperties");
}

QorReturnT CliApiContext5::setSessionProperties(
    unsigned, std::vector<SessionProperty> const&) {
  throwNotImplemented("setSessionProperties");
}

QorReturnT CliApiContext5::printHistory(unsigned, long long) {
  throwNotImplemented("printHistory");
}

QorReturnT CliApiContext5::setPartialLineOutput(unsigned, unsigned, unsigned,
                                                char const*) {
  throwNotImplemented("setPartialLineOutput");
}

QorReturnT CliApiContext5::setConditionalOutput(unsigned, unsigned, unsigned,
                                                char const*) {
  throwNotImplemented("setConditionalOutput");
}

QorReturnT CliApiContext5::setCompletion(unsigned,
                                         QorCliCompletionData_1T const&) {
  throwNotImplemented("setCompletion");
}

QorReturnT CliApiContext5::setCompletionAndPrompt(
    unsigned, QorCliCompletionData_1T const&,
    QorCliPasswordPromptData_1T const&) {
  throwNotImplemented("setCompletionAndPrompt");
}

}  // namespace QorCliUtilities
