#include "QorLoggingWrapper.h"

#include <cstdarg>
#include <mutex>

#include "QorThreadLock.h"
#include "RecordWriter.h"

namespace Qor {

namespace Trace {
Subsystem const Cli{"cli"};
}

namespace {

QorThreadLock& creationLock() {
  static QorThreadLock lock;
  return lock;
}

}  // namespace

LoggingWrapper::LoggingWrapper() : writer_(std::make_unique<RecordWriter>()) {}
LoggingWrapper::~LoggingWrapper() = default;

LoggingWrapper& LoggingWrapper::instance() {
  // Never destroyed: it must outlive all static objects, which may still trace
  // while the process exits.
  static LoggingWrapper* const facade = [] {
    std::lock_guard<QorThreadLock> const guard(creationLock());
    return new LoggingWrapper;
  }();
  return *facade;
}

unsigned LoggingWrapper::get_level() const { return writer_->level(); }

void LoggingWrapper::trace_printf(Trace::Subsystem const& subsystem,
                                  char const* file, char const* function,
                                  unsigned line, char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  writer_->write({"level", 0, subsystem.name, file, function, line}, format,
                 arguments);
  va_end(arguments);
}

void LoggingWrapper::trace_v2_printf(Trace::Subsystem const& subsystem,
                                     unsigned level, char const* file,
                                     char const* function, unsigned line,
                                     char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  writer_->write({"level", level, subsystem.name, file, function, line}, format,
                 arguments);
  va_end(arguments);
}

void LoggingWrapper::log_printf(Trace::Subsystem const& subsystem,
                                unsigned severity, char const* file,
                                char const* function, unsigned line,
                                char const* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  writer_->write({"severity", severity, subsystem.name, file, function, line},
                 format, arguments);
  va_end(arguments);
}

}  // namespace Qor
