#ifndef QOR_CLI_OPERATION_TRACE_H
#define QOR_CLI_OPERATION_TRACE_H

#include <exception>
#include <string>
#include <type_traits>

#include "QorLoggingWrapper.h"

namespace QorCliUtilities {

// Every public operation of the component, its command, the tree, the nodes,
// the contexts and the sinks traces its entry and its exit, except constructors
// (but FilterCommand's, which builds the tree, traces), destructors and
//
// - AutoCompleteNode::children, addChild and clearChildren, which the tree
//   calls in every iteration;
// - PipeAction, PipeComponentRecord and FrameworkPortal: steps of component
//   operations, which trace;
// - Grammar, Arguments and Parameter: steps of the option node and of commands,
//   which trace;
// - TextProcessor, LineCutter and Printer, which process each line;
// - Error, which is used when something went wrong;
// - CliErrors, LowerCase, OrEmpty and PipeText, which only compose texts;
// - the filter's matching core, which processes each line or byte, and knows
//   neither the CLI nor the framework.
//
// Tracing never changes the behaviour of an operation: if memory runs out, the
// record is dropped, and nothing declared here throws.

// The severity of an error in the system log.
constexpr unsigned kErrorSeverity = 4;

// Whether errors are logged: the logging facade's level is at least 4. Callable
// from any thread.
bool errorLogWanted() noexcept;

// Whether traces are written: the logging facade's level is above 7. Callable
// from any thread.
bool traceWanted() noexcept;

// Writes an error to the system log if errorLogWanted(), or drops it if memory
// runs out. Callable from any thread.
void logError(char const* text, char const* file, char const* function,
              unsigned line) noexcept;

// Traces the entry of an operation on construction, and its exit when one of
// the exit functions is called; an operation left by an exception has no exit
// record. Entries have level 9, exits level 10.
//
//   int Tree::run(...) {
//     OperationTrace const trace;
//     ...
//     return trace.exitWith(result);
//   }
//
// The arguments `file`, `function` and `line` default to the caller's and must
// not be passed. Texts are built only if they will be written. An object
// belongs to one call on one thread.
class OperationTrace {
 public:
  // " >> "
  explicit OperationTrace(char const* file = __builtin_FILE(),
                          char const* function = __builtin_FUNCTION(),
                          unsigned line = __builtin_LINE()) noexcept
      : file_(file), function_(function), wanted_(traceWanted()) {
    if (wanted_) write(kEntryLevel, " >> ", "", line);
  }

  // " >> " and the result of `detail`, a function without arguments, which is
  // only called if the record is written.
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

  // " << " without the address; returns `result`.
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
// are only evaluated if the record is written.
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

// Writes `text` to the system log as an error (severity 4).
#define QOR_CLI_LOG_ERROR(text) \
  ::QorCliUtilities::logError(text, __FILE__, __func__, __LINE__)

#endif
