#include "OperationTrace.h"

#include <charconv>
#include <limits>

namespace QorCliUtilities {
namespace {

constexpr unsigned kTraceThreshold = 7;

// Cached: the facade lives as long as the process, and fetching it costs as
// much as reading its level.
Qor::LoggingWrapper& facade() {
  static Qor::LoggingWrapper& theFacade = Qor::LoggingWrapper::instance();
  return theFacade;
}

// 0 if there is no memory to create the facade.
unsigned currentLevel() noexcept {
  try {
    return facade().get_level();
  } catch (std::exception const&) {
    return 0;
  }
}

}  // namespace

bool errorLogWanted() noexcept { return currentLevel() >= kErrorSeverity; }

bool traceWanted() noexcept { return currentLevel() > kTraceThreshold; }

void logError(char const* text, char const* file, char const* function,
              unsigned line) noexcept {
  if (!errorLogWanted()) return;
  try {
    facade().log_printf(Qor::Trace::Cli, kErrorSeverity, file, function, line,
                        "%s", text);
  } catch (std::exception const&) {
    return;
  }
}

int OperationTrace::exitWith(int result, unsigned line) const noexcept {
  return exitWithNumber(result, line);
}

unsigned OperationTrace::exitWith(unsigned result,
                                  unsigned line) const noexcept {
  return exitWithNumber(result, line);
}

unsigned long OperationTrace::exitWith(unsigned long result,
                                       unsigned line) const noexcept {
  return exitWithNumber(result, line);
}

unsigned long long OperationTrace::exitWith(unsigned long long result,
                                            unsigned line) const noexcept {
  return exitWithNumber(result, line);
}

template <class Number>
Number OperationTrace::exitWithNumber(Number result,
                                      unsigned line) const noexcept {
  if (!wanted_) return result;
  // The sign, all digits and the final NUL.
  char text[std::numeric_limits<Number>::digits10 + 3] = {};
  std::to_chars(std::begin(text), std::end(text) - 1, result);
  write(kExitLevel, " << ", text, line);
  return result;
}

void OperationTrace::write(unsigned level, char const* mark, char const* text,
                           unsigned line) const noexcept {
  try {
    Qor::LoggingWrapper::instance().trace_v2_printf(
        Qor::Trace::Cli, level, file_, function_, line, "%s%s", mark, text);
  } catch (std::exception const&) {
    return;
  }
}

}  // namespace QorCliUtilities
