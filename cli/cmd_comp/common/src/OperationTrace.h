#ifndef QOR_CLI_OPERATION_TRACE_H
#define QOR_CLI_OPERATION_TRACE_H

#include <string>

#include "QorLoggingWrapper.h"

namespace QorCliUtilities {

// The severity of an error in the system log.
constexpr unsigned kErrorSeverity = 4;

// True when errors are to be written to the system log: the logging facade's
// level is at least 4. Callable from any thread.
bool errorLogWanted();

// True when trace records are to be written at all: the logging facade's level
// is above 7. Never throws for an existing facade. Callable from any thread.
bool traceWanted();

// Traces the entry of an operation when it is built, and the exit when one of
// the exit functions is called; an operation left by an exception has no exit
// record. Entry has level 9, exit level 10.
//
//   int Tree::run(...) {
//     OperationTrace const trace;
//     ...
//     return trace.exit(result);
//   }
//
// The default arguments take the place of the caller and are not to be given.
// Building one costs a question to the facade; no text is built unless it is
// written. An object belongs to one call on one thread.
class OperationTrace {
 public:
  explicit OperationTrace(char const* file = __builtin_FILE(),
                          char const* function = __builtin_FUNCTION(),
                          unsigned line = __builtin_LINE());

  // " << "
  void exit(unsigned line = __builtin_LINE()) const;

  // " << %d"; return `result`.
  int exitWith(int result, unsigned line = __builtin_LINE()) const;
  unsigned exitWith(unsigned result, unsigned line = __builtin_LINE()) const;

  // " << %s"; return `result`. A bool is written as "true" or "false".
  bool exitWith(bool result, unsigned line = __builtin_LINE()) const;
  char const* exitWith(char const* result,
                       unsigned line = __builtin_LINE()) const;
  std::string exitWith(std::string result,
                       unsigned line = __builtin_LINE()) const;

 private:
  void writeText(char const* text, unsigned line) const;

  char const* file_;
  char const* function_;
  bool wanted_;
};

}  // namespace QorCliUtilities

// Traces a progress message (level 0): a printf format and its arguments, which
// are evaluated only when the record is written.
#define QOR_CLI_TRACE(...)                                               \
  do {                                                                   \
    if (::QorCliUtilities::traceWanted()) {                              \
      ::Qor::LoggingWrapper::instance().trace_printf(                    \
          ::Qor::Trace::Cli, __FILE__, __func__, __LINE__, __VA_ARGS__); \
    }                                                                    \
  } while (false)

// Writes an error to the system log (severity 4): arguments as above.
#define QOR_CLI_LOG_ERROR(...)                                            \
  do {                                                                    \
    if (::QorCliUtilities::errorLogWanted()) {                            \
      ::Qor::LoggingWrapper::instance().log_printf(                       \
          ::Qor::Trace::Cli, ::QorCliUtilities::kErrorSeverity, __FILE__, \
          __func__, __LINE__, __VA_ARGS__);                               \
    }                                                                     \
  } while (false)

#endif
