#ifndef QOR_CLI_OPERATION_TRACE_H
#define QOR_CLI_OPERATION_TRACE_H

#include <exception>
#include <string>
#include <type_traits>

#include "QorLoggingWrapper.h"

namespace QorCliUtilities {

// Every public operation of the component, its command, the tree, the nodes,
// the contexts and the sinks traces its entry and its exit. Without a trace are
// constructors (but FilterCommand's, which builds the tree) and destructors,
// and, for a reason of their own:
//
// - AutoCompleteNode::children, addChild and clearChildren: how the tree gets
//   at its own data, at each turn of each loop;
// - PipeAction, PipeComponentRecord and FrameworkPortal: steps of operations
//   of the component, which trace;
// - Grammar, Arguments and Parameter: steps of the option node and of commands,
//   which trace;
// - TextProcessor, LineCutter and Printer: they work on each line;
// - Error: it is made and read when something went wrong;
// - CliErrors, LowerCase, OrEmpty and PipeText: functions that only compose a
//   text;
// - the matching core of the filter: it works on each line or each byte, and
//   knows neither the CLI nor the framework.
//
// Tracing never changes what an operation does: a record for which there is no
// memory is dropped, and nothing declared here throws.

// The severity of an error in the system log.
constexpr unsigned kErrorSeverity = 4;

// True when errors are to be written to the system log: the logging facade's
// level is at least 4. Callable from any thread.
bool errorLogWanted() noexcept;

// True when trace records are to be written at all: the logging facade's level
// is above 7. Callable from any thread.
bool traceWanted() noexcept;

// Writes an error to the system log, when errors are to be written; without
// memory it is dropped. Callable from any thread.
void logError(char const* text, char const* file, char const* function,
              unsigned line) noexcept;

// Traces the entry of an operation when it is built, and the exit when one of
// the exit functions is called; an operation left by an exception has no exit
// record. Entry has level 9, exit level 10.
//
//   int Tree::run(...) {
//     OperationTrace const trace;
//     ...
//     return trace.exitWith(result);
//   }
//
// The arguments `file`, `function` and `line` take the place of the caller and
// are not to be given. Building one asks the facade for its level; no text is
// built unless it is written. An object belongs to one call on one thread.
class OperationTrace {
 public:
  // " >> "
  explicit OperationTrace(char const* file = __builtin_FILE(),
                          char const* function = __builtin_FUNCTION(),
                          unsigned line = __builtin_LINE()) noexcept
      : file_(file), function_(function), wanted_(traceWanted()) {
    if (wanted_) write(kEntryLevel, " >> ", "", line);
  }

  // " >> " and the text that `detail`, a function without arguments, returns.
  // It is called when the record is to be written only.
  template <class Detail,
            class = std::enable_if_t<std::is_invocable_v<Detail const&>>>
  explicit OperationTrace(Detail const& detail,
                          char const* file = __builtin_FILE(),
                          char const* function = __builtin_FUNCTION(),
                          unsigned line = __builtin_LINE()) noexcept
      : file_(file), function_(function), wanted_(traceWanted()) {
    if (!wanted_) return;
    try {
      write(kEntryLevel, " >> ", detail().c_str(), line);
    } catch (std::exception const&) {
      return;
    }
  }

  // " << "
  void exit(unsigned line = __builtin_LINE()) const noexcept {
    if (wanted_) write(kExitLevel, " << ", "", line);
  }

  // " << %d", in decimal; return `result`.
  int exitWith(int result, unsigned line = __builtin_LINE()) const noexcept;
  unsigned exitWith(unsigned result,
                    unsigned line = __builtin_LINE()) const noexcept;
  unsigned long exitWith(unsigned long result,
                         unsigned line = __builtin_LINE()) const noexcept;
  unsigned long long exitWith(unsigned long long result,
                              unsigned line = __builtin_LINE()) const noexcept;
  template <class Enumeration,
            class = std::enable_if_t<std::is_enum_v<Enumeration>>>
  Enumeration exitWith(Enumeration result,
                       unsigned line = __builtin_LINE()) const noexcept {
    exitWith(static_cast<std::underlying_type_t<Enumeration>>(result), line);
    return result;
  }

  // " << %s"; return `result`. A bool is written as "true" or "false", a null
  // text as "(null)".
  bool exitWith(bool result, unsigned line = __builtin_LINE()) const noexcept {
    exitWith(result ? "true" : "false", line);
    return result;
  }
  char const* exitWith(char const* result,
                       unsigned line = __builtin_LINE()) const noexcept {
    char const* const text = result == nullptr ? "(null)" : result;
    if (wanted_) write(kExitLevel, " << ", text, line);
    return result;
  }
  std::string exitWith(std::string result,
                       unsigned line = __builtin_LINE()) const noexcept {
    exitWith(result.c_str(), line);
    return result;
  }

  // " << ", for an address says nothing; returns `result`.
  template <class Object>
  Object* exitWith(Object* result,
                   unsigned line = __builtin_LINE()) const noexcept {
    exit(line);
    return result;
  }

 private:
  static constexpr unsigned kEntryLevel = 9;
  static constexpr unsigned kExitLevel = 10;

  void write(unsigned level, char const* mark, char const* text,
             unsigned line) const noexcept;
  template <class Number>
  Number exitWithNumber(Number result, unsigned line) const noexcept;

  char const* file_;
  char const* function_;
  bool wanted_;
};

}  // namespace QorCliUtilities

// Traces a progress message (level 0): a printf format and its arguments, which
// are evaluated only when the record is written.
#define QOR_CLI_TRACE(...)                                               \
  do {                                                                   \
    if (!::QorCliUtilities::traceWanted()) break;                        \
    try {                                                                \
      ::Qor::LoggingWrapper::instance().trace_printf(                    \
          ::Qor::Trace::Cli, __FILE__, __func__, __LINE__, __VA_ARGS__); \
    } catch (std::exception const&) {                                    \
      break;                                                             \
    }                                                                    \
  } while (false)

// Writes an error to the system log (severity 4): `text` as it stands.
#define QOR_CLI_LOG_ERROR(text) \
  ::QorCliUtilities::logError(text, __FILE__, __func__, __LINE__)

#endif
