#ifndef QOR_CLI_API_CONTEXT_INTERFACE_H
#define QOR_CLI_API_CONTEXT_INTERFACE_H

#include <Poco/SharedPtr.h>

#include <cstdint>
#include <string>
#include <vector>

#include "QorTypes.h"

struct QorCliApiContext_5;
struct QorCliApiContext_6;
struct QorCliApiContext_7;
struct QorCliApiContext_8;
struct QorCliCompletionData_1T;
struct QorCliPasswordPromptData_1T;

namespace QorCliUtilities {

// The session and the action that a command serves, and its means to respond.
//
// An interface over the versions of the framework's context record. get_v5() to
// get_v8() tell which record is behind it: at most one is not null. The engine
// owns the record and its texts.
//
// Operations that return QorReturnT return 0 on success, -1 if the record does
// not support them, and otherwise the engine's status. In setOutput and the
// completion setters, the first three numbers are the index of this item from
// 0, the number of items, and the action id. Text arguments are NUL-terminated,
// not null, and only read during the call. Returned texts belong to the engine
// and are valid as long as the record; each may be null if the session has
// none. Numbers that only the engine interprets (handles, modes, the reason of
// a shutdown) are passed through.
//
// An object is used by one thread at a time.
class CliApiContext {
 public:
  // A named property of the session.
  struct SessionProperty {
    std::string name;
    std::string value;
  };

  virtual ~CliApiContext() = default;

  // The record behind this context, or null when it is of another version.
  virtual QorCliApiContext_5 const* get_v5() const;
  virtual QorCliApiContext_5* get_v5();
  virtual QorCliApiContext_6 const* get_v6() const;
  virtual QorCliApiContext_6* get_v6();
  virtual QorCliApiContext_7 const* get_v7() const;
  virtual QorCliApiContext_7* get_v7();
  virtual QorCliApiContext_8 const* get_v8() const;
  virtual QorCliApiContext_8* get_v8();

  // Whether there is a record behind this context. If not, nothing else may be
  // called, unless a subclass permits it.
  virtual operator bool() const = 0;

  // The current action, stored in the context; 0 until it is set.
  virtual unsigned getActionId() const = 0;
  virtual void setActionId(unsigned actionId) = 0;
  // Moves the session to another position in the model.
  virtual QorReturnT setCursor(char const* cursor) = 0;
  // The session's current prompt.
  virtual char const* getPrompt() const = 0;
  // Sends the prompt stored by setPromptString, if one is pending.
  virtual QorReturnT setPrompt() = 0;
  // Stores a copy of `prompt` for the next setPrompt; null means empty.
  virtual void setPromptString(char const* prompt) = 0;
  // Prints `text`, which includes its line feed.
  virtual QorReturnT setOutput(unsigned index, unsigned count,
                               unsigned actionId, char const* text) = 0;
  // Offers a completion candidate of the kind `token`, with its help text.
  virtual QorReturnT setAutocompleteResult(unsigned index, unsigned count,
                                           unsigned actionId,
                                           QorCliCompletionToken_1T token,
                                           char const* completion,
                                           char const* help) = 0;
  // Ends the session. `reason` is a number that the engine reports.
  virtual QorReturnT sessionShutdown(unsigned reason) = 0;
  // As setAutocompleteResult, with the rank and the key for sorting.
  virtual QorReturnT setSortableAutocompleteResult(
      unsigned index, unsigned count, unsigned actionId,
      QorCliCompletionToken_1T token, char const* completion, char const* help,
      QorCliSortOrderEnum_3T sortOrder, char const* sortKey) = 0;
  virtual unsigned getSessionId() const = 0;
  // The engine's handle of the session's transaction, opaque to the plug-in.
  virtual unsigned long getTxHandle() const = 0;
  virtual void setTxHandle(unsigned long handle) = 0;
  virtual QorCliModeEnum_1T getMode() const = 0;
  virtual void setMode(QorCliModeEnum_1T mode) = 0;
  virtual char const* getLoginName() const = 0;
  // The session's position in the model; null or "" if it has none.
  virtual char const* getCursor() const = 0;
  // The engine's handle of the operator's rights.
  virtual std::uint64_t getAuthHandle() const = 0;
  // The session's timeout, in seconds.
  virtual unsigned getTimeout() const = 0;
  // Whether the session has exclusive use of the configuration.
  virtual bool getExclusiveUse() const = 0;
  virtual void setExclusiveUse(bool exclusive) = 0;
  virtual QorCliLockEnum_1T getLock() const = 0;
  virtual QorReturnT setLock(QorCliLockEnum_1T lock) = 0;
  // A separate context over the same record, with the same action id and no
  // pending prompt. Never null; owned by the caller.
  virtual Poco::SharedPtr<CliApiContext> clone() const = 0;
  // The status of the previous command.
  virtual void setLastStatus(QorReturnT status) = 0;
  virtual QorReturnT getLastStatus() const = 0;

  // Operations of later record versions. Throw std::runtime_error if the record
  // lacks them.
  virtual QorReturnT getSessionProperties(
      unsigned actionId, std::vector<SessionProperty>& properties) const = 0;
  virtual QorReturnT setSessionProperties(
      unsigned actionId, std::vector<SessionProperty> const& properties) = 0;
  virtual QorReturnT printHistory(unsigned actionId, long long entries) = 0;
  virtual QorReturnT setPartialLineOutput(unsigned index, unsigned count,
                                          unsigned actionId,
                                          char const* text) = 0;
  virtual QorReturnT setConditionalOutput(unsigned index, unsigned count,
                                          unsigned actionId,
                                          char const* text) = 0;
  virtual QorReturnT setCompletion(unsigned actionId,
                                   QorCliCompletionData_1T const& data) = 0;
  virtual QorReturnT setCompletionAndPrompt(
      unsigned actionId, QorCliCompletionData_1T const& data,
      QorCliPasswordPromptData_1T const& prompt) = 0;

 protected:
  CliApiContext() = default;
  CliApiContext(CliApiContext const&) = default;
  CliApiContext& operator=(CliApiContext const&) = default;
};

}  // namespace QorCliUtilities

#endif
