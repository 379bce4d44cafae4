#ifndef QOR_RECORD_WRITER_H
#define QOR_RECORD_WRITER_H

#include <cstdarg>

namespace Qor {

// The kind and the origin of a record.
struct RecordOrigin {
  char const* kind;  // "severity" or "level"
  unsigned value;
  char const* subsystem;
  char const* file;
  char const* function;
  unsigned line;
};

// Writes log and trace records, one line each:
//
//   <severity|level> <value> <subsystem> <file>:<line> <function>: <text>
//
// to the file that the environment variable QOR_LOG_FILE names (appended), or
// to standard error. In the text, a line feed is written as \n and any other
// control byte as \xNN, with two upper-case hexadecimal digits. The environment
// is read once, at construction. Each record is a single write(2), so records
// of several threads do not mix, unless the system writes only a part of it.
// Any thread.
class RecordWriter {
 public:
  RecordWriter();
  ~RecordWriter();
  RecordWriter(RecordWriter const&) = delete;
  RecordWriter& operator=(RecordWriter const&) = delete;

  // The level from QOR_LOG_LEVEL; 4 if that is unset or not a number.
  unsigned level() const { return level_; }

  // Writes one record; `format` and `arguments` as for vprintf. Drops it if
  // that fails or memory runs out.
  void write(RecordOrigin const& origin, char const* format,
             va_list arguments) noexcept __attribute__((format(printf, 3, 0)));

 private:
  unsigned level_;
  int file_;  // descriptor; owned unless it is standard error
};

}  // namespace Qor

#endif
