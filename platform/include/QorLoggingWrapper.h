#ifndef QOR_LOGGING_WRAPPER_H
#define QOR_LOGGING_WRAPPER_H

#include <memory>

namespace Qor {

class RecordWriter;

namespace Trace {

// Names a part of the system in log and trace records.
struct Subsystem {
  char const* name;  // never null, static storage
};

// The command-line interface.
extern __attribute__((visibility("default"))) Subsystem const Cli;

}  // namespace Trace

// The framework's facade for log and trace records.
//
// A log record has a severity and goes to the system log; a trace record has a
// level and is meant for developers. The facade writes whatever it is given:
// callers ask get_level() first, so that a text nobody wants is never built.
// Each call writes one record of one line: a line feed inside the text is
// written as \n, and any other control byte as \xNN, its value in hexadecimal.
// A record that cannot be written, or for which there is no memory, is dropped;
// no member throws, but instance() throws std::bad_alloc when it cannot create
// the facade.
//
// All members may be called from any thread.
class __attribute__((visibility("default"))) LoggingWrapper {
 public:
  // Returns the one facade of the process. The first call creates it, under the
  // framework's lock.
  static LoggingWrapper& instance();

  // The level in force, 0 and up. Log records are wanted when their severity is
  // at most the level; trace records when the level is above 7.
  unsigned get_level() const;

  // Writes a trace record of level 0. `file` and `function` say where, `line`
  // counts from 1, `format` is a printf format. All texts are NUL-terminated,
  // not null, and only read during the call.
  void trace_printf(Trace::Subsystem const& subsystem, char const* file,
                    char const* function, unsigned line, char const* format,
                    ...) __attribute__((format(printf, 6, 7)));

  // As trace_printf, with a level of the caller's choice.
  void trace_v2_printf(Trace::Subsystem const& subsystem, unsigned level,
                       char const* file, char const* function, unsigned line,
                       char const* format, ...)
      __attribute__((format(printf, 7, 8)));

  // Writes a log record with a severity: 0 is the gravest, 4 an error.
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
