#ifndef QOR_CLI_ENGINE_LOG_RECORD_H
#define QOR_CLI_ENGINE_LOG_RECORD_H

#include <optional>
#include <string>

namespace QorCliEngine {

// A record of the runtime library's, which is a line:
//
//   <severity|level> <value> <subsystem> <file>:<line> <function>: <text>
struct LogRecord {
  enum class Kind { kSeverity, kLevel };

  // Returns nothing for a line that is no record.
  static std::optional<LogRecord> read(std::string const& line);

  Kind kind;
  unsigned value;
  std::string file;
  std::string function;
  std::string text;  // without white space around it
};

}  // namespace QorCliEngine

#endif
