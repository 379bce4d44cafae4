#ifndef QOR_CLI_API_CONTEXT_H
#define QOR_CLI_API_CONTEXT_H

#include <cstddef>
#include <cstdint>

#include "QorTypes.h"

extern "C" {

// The version-5 CLI API context: a session, and the functions to respond to it.
//
// The CLI engine fills and owns the record and all texts in it; it is valid
// during the call that passes it. A function pointer is null if the engine does
// not support the operation. Every function takes the record as its first
// argument, returns 0 on success, and reads its texts only during the call.
//
// For the functions that answer an action, `index` counts the items from 0,
// `count` is the number of items, and `actionId` identifies the action. Only
// the engine interprets `reason` and the handles. A text in the record may be
// null; a text argument must not.
//
// A record is used only on the thread that received it.
struct QorCliApiContext_5 {
  std::uint32_t sessionId;
  unsigned long transactionHandle;  // the session's transaction; writable
  char const* loginName;
  QorCliModeEnum_1T mode;  // writable
  char const* cursor;      // position in the model; null or "": none
  char const* prompt;
  std::uint32_t timeout;  // seconds
  std::uint32_t unused;
  std::uint64_t authorisationHandle;  // the operator's rights
  QorReturnT (*setCursor)(QorCliApiContext_5* record, char const* cursor);
  QorReturnT (*setPrompt)(QorCliApiContext_5* record, char const* prompt);
  QorReturnT (*setOutput)(QorCliApiContext_5* record, unsigned index,
                          unsigned count, unsigned actionId, char const* text);
  QorReturnT (*setAutocompleteResult)(QorCliApiContext_5* record,
                                      unsigned index, unsigned count,
                                      unsigned actionId, unsigned token,
                                      char const* completion, char const* help);
  QorReturnT (*sessionShutdown)(QorCliApiContext_5* record, unsigned reason);
  bool exclusiveUse;  // of the configuration by this session; writable
  QorReturnT (*setSortableAutocompleteResult)(
      QorCliApiContext_5* record, unsigned index, unsigned count,
      unsigned actionId, unsigned token, char const* completion,
      char const* help, unsigned sortOrder, char const* sortKey);
  QorReturnT lastStatus;  // of the previous command; writable
  QorCliLockEnum_1T lock;
  QorReturnT (*setLock)(QorCliApiContext_5* record, unsigned lock);
};

}  // extern "C"

static_assert(sizeof(bool) == 1);

// The ILP32 layout is normative; on LP64 the same members follow in the same
// order with natural alignment.
#define QOR_CONTEXT_OFFSET(member, ilp32, lp64)              \
  static_assert(offsetof(QorCliApiContext_5, member) ==      \
                    (sizeof(void*) == 4 ? (ilp32) : (lp64)), \
                "QorCliApiContext_5::" #member " is misplaced")

static_assert(offsetof(QorCliApiContext_5, sessionId) == 0);
QOR_CONTEXT_OFFSET(transactionHandle, 4, 8);
QOR_CONTEXT_OFFSET(loginName, 8, 16);
QOR_CONTEXT_OFFSET(mode, 12, 24);
QOR_CONTEXT_OFFSET(cursor, 16, 32);
QOR_CONTEXT_OFFSET(prompt, 20, 40);
QOR_CONTEXT_OFFSET(timeout, 24, 48);
QOR_CONTEXT_OFFSET(unused, 28, 52);
QOR_CONTEXT_OFFSET(authorisationHandle, 32, 56);
QOR_CONTEXT_OFFSET(setCursor, 40, 64);
QOR_CONTEXT_OFFSET(setPrompt, 44, 72);
QOR_CONTEXT_OFFSET(setOutput, 48, 80);
QOR_CONTEXT_OFFSET(setAutocompleteResult, 52, 88);
QOR_CONTEXT_OFFSET(sessionShutdown, 56, 96);
QOR_CONTEXT_OFFSET(exclusiveUse, 60, 104);
QOR_CONTEXT_OFFSET(setSortableAutocompleteResult, 64, 112);
QOR_CONTEXT_OFFSET(lastStatus, 68, 120);
QOR_CONTEXT_OFFSET(lock, 72, 124);
QOR_CONTEXT_OFFSET(setLock, 76, 128);
#undef QOR_CONTEXT_OFFSET

static_assert(sizeof(QorCliApiContext_5) == (sizeof(void*) == 4 ? 80 : 136));

#endif
