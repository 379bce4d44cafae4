#include "diagnostics/LogRecord.h"

#include <Poco/String.h>

#include <sstream>

namespace QorCliEngine {

// The name of a function may hold blanks, as in "operator bool", but no colon.
std::optional<LogRecord> LogRecord::read(std::string const& line) {
  std::istringstream words(line);
  std::string kind;
  std::string subsystem;
  std::string place;
  LogRecord record{};
  words >> kind >> record.value >> subsystem >> place;
  std::getline(words, record.function, ':');
  bool const known = kind == "level" || kind == "severity";
  if (!known || words.eof() || !words) return std::nullopt;
  std::getline(words, record.text);
  Poco::trimInPlace(record.function);
  Poco::trimInPlace(record.text);
  record.kind = kind == "level" ? Kind::kLevel : Kind::kSeverity;
  record.file = place.substr(0, place.rfind(':'));
  return record;
}

}  // namespace QorCliEngine
