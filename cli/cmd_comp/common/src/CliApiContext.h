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

// The session and the action that a command works for, and the way to answer.
//
// An interface over the framework's context records, which come in versions.
// Code asks get_v5() to get_v8() which record stands behind it: at most one is
// not null. The record and the texts in it belong to the engine.
//
// Operations that return QorReturnT return 0 on success, -1 when the record
// does not offer them, and otherwise what the engine answered. In setOutput and
// the completion setters the first three numbers are: the index of this item
// from 0, the number of items, the action id. Texts are NUL-terminated, not
// null, and only read during the call. Texts returned are the engine's and
// valid as long as the record; each may be null, when the session has none.
// Numbers whose meaning is the engine's own (handles, modes, the reason of a
// shutdown) are passed through as they are.
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

  // True when there is a record behind this context. Nothing else may be called
  // when there is none.
  virtual operator bool() const = 0;

  // The action that is being answered, kept by the context: 0 until it is set.
  virtual unsigned getActionId() const = 0;
  virtual void setActionId(unsigned actionId) = 0;
  // Moves the session to another place in the model.
  virtual QorReturnT setCursor(char const* cursor) = 0;
  // The prompt that the session has now.
  virtual char const* getPrompt() const = 0;
  // Sends the prompt that setPromptString left, if one is waiting.
  virtual QorReturnT setPrompt() = 0;
  // Keeps a copy of `prompt` for the next setPrompt; null is read as empty.
  virtual void setPromptString(char const* prompt) = 0;
  // Prints `text`, which brings its own line feed.
  virtual QorReturnT setOutput(unsigned index, unsigned count,
                               unsigned actionId, char const* text) = 0;
  // Offers a completion candidate of the kind `token`, with the help text shown
  // beside it.
  virtual QorReturnT setAutocompleteResult(unsigned index, unsigned count,
                                           unsigned actionId,
                                           QorCliCompletionToken_1T token,
                                           char const* completion,
                                           char const* help) = 0;
  // Ends the session. `reason` is a number that the engine reports.
  virtual QorReturnT sessionShutdown(unsigned reason) = 0;
  // As setAutocompleteResult, with the rank and the key by which the engine
  // sorts the candidates.
  virtual QorReturnT setSortableAutocompleteResult(
      unsigned index, unsigned count, unsigned actionId,
      QorCliCompletionToken_1T token, char const* completion, char const* help,
      QorCliSortOrderEnum_3T sortOrder, char const* sortKey) = 0;
  virtual unsigned getSessionId() const = 0;
  // The session's transaction, as the engine calls it; the plug-in only hands
  // it on.
  virtual unsigned long getTxHandle() const = 0;
  virtual void setTxHandle(unsigned long handle) = 0;
  virtual QorCliModeEnum_1T getMode() const = 0;
  virtual void setMode(QorCliModeEnum_1T mode) = 0;
  virtual char const* getLoginName() const = 0;
  // Where in the model the session stands; null or "": nowhere.
  virtual char const* getCursor() const = 0;
  // The operator's rights, as the engine calls them.
  virtual std::uint64_t getAuthHandle() const = 0;
  // In seconds.
  virtual unsigned getTimeout() const = 0;
  // Whether the session has the configuration for itself.
  virtual bool getExclusiveUse() const = 0;
  virtual void setExclusiveUse(bool exclusive) = 0;
  virtual QorCliLockEnum_1T getLock() const = 0;
  virtual QorReturnT setLock(QorCliLockEnum_1T lock) = 0;
  // A context of its own over the same record, with the same action id and no
  // prompt waiting. Never null; owned by the caller.
  virtual Poco::SharedPtr<CliApiContext> clone() const = 0;
  // The status of the command before.
  virtual void setLastStatus(QorReturnT status) = 0;
  virtual QorReturnT getLastStatus() const = 0;

  // Operations of later record versions. A context over a record that lacks one
  // throws std::runtime_error.
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
