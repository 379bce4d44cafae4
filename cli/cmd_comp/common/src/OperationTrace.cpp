#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

constexpr unsigned kTraceThreshold = 7;
constexpr unsigned kEntryLevel = 9;
constexpr unsigned kExitLevel = 10;

}  // namespace

bool errorLogWanted() {
  return Qor::LoggingWrapper::instance().get_level() >= kErrorSeverity;
}

bool traceWanted() {
  return Qor::LoggingWrapper::instance().get_level() > kTraceThreshold;
}

OperationTrace::OperationTrace(char const* file, char const* function,
                               unsigned line)
    : file_(file), function_(function), wanted_(traceWanted()) {
  if (!wanted_) return;
  Qor::LoggingWrapper::instance().trace_v2_printf(
      Qor::Trace::Cli, kEntryLevel, file_, function_, line, " >> ");
}

void OperationTrace::exit(unsigned line) const {
  if (!wanted_) return;
  Qor::LoggingWrapper::instance().trace_v2_printf(
      Qor::Trace::Cli, kExitLevel, file_, function_, line, " << ");
}

int OperationTrace::exitWith(int result, unsigned line) const {
  if (wanted_) {
    Qor::LoggingWrapper::instance().trace_v2_printf(
        Qor::Trace::Cli, kExitLevel, file_, function_, line, " << %d", result);
  }
  return result;
}

unsigned OperationTrace::exitWith(unsigned result, unsigned line) const {
  exitWith(static_cast<int>(result), line);
  return result;
}

bool OperationTrace::exitWith(bool result, unsigned line) const {
  writeText(result ? "true" : "false", line);
  return result;
}

char const* OperationTrace::exitWith(char const* result, unsigned line) const {
  writeText(result, line);
  return result;
}

std::string OperationTrace::exitWith(std::string result, unsigned line) const {
  writeText(result.c_str(), line);
  return result;
}

void OperationTrace::writeText(char const* text, unsigned line) const {
  if (!wanted_) return;
  Qor::LoggingWrapper::instance().trace_v2_printf(
      Qor::Trace::Cli, kExitLevel, file_, function_, line, " << %s", text);
}

}  // namespace QorCliUtilities
