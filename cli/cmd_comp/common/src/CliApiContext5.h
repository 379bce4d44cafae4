#ifndef QOR_CLI_API_CONTEXT5_H
#define QOR_CLI_API_CONTEXT5_H

#include <string>

#include "CliApiContext.h"
#include "QorCliApiContext.h"

namespace QorCliUtilities {

// A CliApiContext over the framework's version-5 context record.
//
// Getters read the record; setTxHandle, setMode, setExclusiveUse and
// setLastStatus write it; the other setters call the record's function of the
// same name and return its result, or -1 if the function pointer is null. The
// action id and the pending prompt are stored here, not in the record.
//
// The record is not owned and must outlive the context and its clones. Over a
// null record, only get_v5() to get_v8(), operator bool, the action id,
// setPromptString and clone() may be used. Used by one thread at a time.
class CliApiContext5 : public CliApiContext {
 public:
  explicit CliApiContext5(QorCliApiContext_5* record);

  QorCliApiContext_5 const* get_v5() const override;
  QorCliApiContext_5* get_v5() override;
  operator bool() const override;
  unsigned getActionId() const override;
  void setActionId(unsigned actionId) override;
  QorReturnT setCursor(char const* cursor) override;
  char const* getPrompt() const override;
  // Returns -1 if the record cannot set a prompt, 0 if none is pending, and
  // otherwise the result of the record's function. A prompt that could not be
  // sent stays pending for the next call.
  QorReturnT setPrompt() override;
  void setPromptString(char const* prompt) override;
  QorReturnT setOutput(unsigned index, unsigned count, unsigned actionId,
                       char const* text) override;
  QorReturnT setAutocompleteResult(unsigned index, unsigned count,
                                   unsigned actionId,
                                   QorCliCompletionToken_1T token,
                                   char const* completion,
                                   char const* help) override;
  QorReturnT sessionShutdown(unsigned reason) override;
  QorReturnT setSortableAutocompleteResult(
      unsigned index, unsigned count, unsigned actionId,
      QorCliCompletionToken_1T token, char const* completion, char const* help,
      QorCliSortOrderEnum_3T sortOrder, char const* sortKey) override;
  unsigned getSessionId() const override;
  unsigned long getTxHandle() const override;
  void setTxHandle(unsigned long handle) override;
  QorCliModeEnum_1T getMode() const override;
  void setMode(QorCliModeEnum_1T mode) override;
  char const* getLoginName() const override;
  char const* getCursor() const override;
  std::uint64_t getAuthHandle() const override;
  unsigned getTimeout() const override;
  bool getExclusiveUse() const override;
  void setExclusiveUse(bool exclusive) override;
  QorCliLockEnum_1T getLock() const override;
  QorReturnT setLock(QorCliLockEnum_1T lock) override;
  Poco::SharedPtr<CliApiContext> clone() const override;
  void setLastStatus(QorReturnT status) override;
  QorReturnT getLastStatus() const override;

  // Not available in version 5: each throws std::runtime_error, which names the
  // operation.
  QorReturnT getSessionProperties(
      unsigned actionId,
      std::vector<SessionProperty>& properties) const override;
  QorReturnT setSessionProperties(
      unsigned actionId,
      std::vector<SessionProperty> const& properties) override;
  QorReturnT printHistory(unsigned actionId, long long entries) override;
  QorReturnT setPartialLineOutput(unsigned index, unsigned count,
                                  unsigned actionId, char const* text) override;
  QorReturnT setConditionalOutput(unsigned index, unsigned count,
                                  unsigned actionId, char const* text) override;
  QorReturnT setCompletion(unsigned actionId,
                           QorCliCompletionData_1T const& data) override;
  QorReturnT setCompletionAndPrompt(
      unsigned actionId, QorCliCompletionData_1T const& data,
      QorCliPasswordPromptData_1T const& prompt) override;

 private:
  QorCliApiContext_5* record_;
  std::string promptString_;
  bool promptPending_ = false;
  unsigned actionId_ = 0;
};

}  // namespace QorCliUtilities

#endif
