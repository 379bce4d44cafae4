#ifndef QOR_TYPES_H
#define QOR_TYPES_H

#include <cstdint>

// The numbers that the framework and its components exchange.
//
// Every enumeration is an unsigned 32-bit number. Only values with a meaning
// here have names; any other value is valid and passed through unchanged. Write
// other values as `QorCliModeEnum_1T{7}`.

// A status code: 0 is success, anything else a failure. QorReturn.h has texts.
using QorReturnT = std::int32_t;

// The actions that the CLI engine requests of a pipe command component.
enum QorCliActionEnum_2T : std::uint32_t {
  QOR_CLI_ACTION_EXECUTE = 2,   // run the command over the given input
  QOR_CLI_ACTION_COMPLETE = 3,  // offer completions of the last word
  QOR_CLI_ACTION_HELP = 4,      // offer what may follow, with help
};

// The CLI modes of sessions, and those in which a command is valid.
enum QorCliModeEnum_1T : std::uint32_t {
  // In other modes, completion of an empty first word omits some keywords.
  QOR_CLI_MODE_EXEC = 1,
  QOR_CLI_MODE_ANY = 65535,  // in a command's set of modes: valid in every mode
};

// The kind of a completion candidate.
enum QorCliCompletionToken_1T : std::uint32_t {
  QOR_CLI_TOKEN_NEXT_WORD = 1,     // a possible next word
  QOR_CLI_TOKEN_OPTION = 2,        // an option, a placeholder or "<cr>"
  QOR_CLI_TOKEN_WORD = 3,          // completes the word being typed
  QOR_CLI_TOKEN_AFTER_LINE = 5,    // a word that may follow the line
  QOR_CLI_TOKEN_PIPE_COMMAND = 6,  // the name of a pipe command
};

// The rank of a completion candidate: smaller ranks are listed first.
enum QorCliSortOrderEnum_3T : std::uint32_t {
  QOR_CLI_SORT_OPTION = 1,
  QOR_CLI_SORT_COMMAND = 6,
  QOR_CLI_SORT_LAST = 7,
};

// The configuration lock that a session holds.
enum QorCliLockEnum_1T : std::uint32_t {
  QOR_CLI_LOCK_NONE = 0,
  QOR_CLI_LOCK_EXCLUSIVE = 1,
};

// The framework's reason to start or stop a component, for logs only.
enum QorStateChangeReason : std::uint32_t {
  QOR_STATE_CHANGE_NORMAL = 0,
};

#endif
