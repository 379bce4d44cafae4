#ifndef QOR_LOGGING_WRAPPER_H
#define QOR_LOGGING_WRAPPER_H

#include <memory>

namespace Qor {

class RecordWriter;

namespace Trace {

// A part of the system, as named in log and trace records.
struct Subsystem {
  char const* name;  // never null, static storage
};

// The command-line interface.
extern __attribute__((visibility("default"))) Subsystem const Cli;

}  // namespace Trace

// The framework's facade for log and trace records.
//
// A log record has a severity and goes to the system log; a trace record has a
// level and is meant for developers. The facade does not filter: callers check
// get_level() first, so that unwanted texts are never built. Each call writes
// one record of one line: a line feed in the text is written as \n, any other
// control byte as \xNN, its value in hexadecimal. A record that cannot be
// written, for lack of memory or otherwise, is dropped. No member throws,
// except that instance() throws std::bad_alloc if it cannot create the facade.
//
// All members may be called from any thread.
class __attribute__((visibility("default"))) LoggingWrapper {
 public:
  // Returns the facade of the process. The first call creates it, under the
  // framework's lock.
  static LoggingWrapper& instance();

  // The current level, at least 0. Log records are wanted if their severity is
  // at most the level; trace records if the level is above 7.
  unsigned get_level() const;

  // Writes a trace record of level 0. `file`, `function` and `line` (from 1)
  // are its origin, `format` is a printf format. All texts are NUL-terminated,
  // not null, and only read during the call.
  void trace_printf(Trace::Subsystem const& subsystem, char const* file,
                    char const* function, unsigned line, char const* format,
                    ...) __attribute__((format(printf, 6, 7)));

  // As trace_printf, with a level.
  void trace_v2_printf(Trace::Subsystem const& subsystem, unsigned level,
                       char const* file, char const* function, unsigned line,
                       char const* format, ...)
      __attribute__((format(printf, 7, 8)));

  // As trace_v2_printf, for a log record: severity 0 is the gravest, 4 an
  // error.
  void log_printf(Trace::Subsystem const& subsystem, unsigned severity,
                  char const* file, char const* function, unsigned line,
                  char const* format, ...)
      __attribute__((format(printf, 7, 8)));

  LoggingWrapper(LoggingWrapper const&) = delete;
  LoggingWrapper& operator=(LoggingWrapper const&) = delete;

 private:
  LoggingWrapper();
  ~LoggingWrapper();

  std::unique_ptr<RecordWriter> writer_;
};

}  // namespace Qor

#endif
