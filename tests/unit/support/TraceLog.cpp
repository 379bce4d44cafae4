#include "TraceLog.h"

#include <cstdlib>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace QorUnit {
namespace {

TraceRecord parsed(std::string const& line) {
  static std::regex const format(
      R"((severity|level) (\d+) (\S+) ([^\s:/]+):(\d+) ([^:]+): ([^]*))");
  std::smatch part;
  if (!std::regex_match(line, part, format)) {
    throw std::runtime_error("not a record: " + line);
  }
  auto const number = [&](std::size_t i) {
    return static_cast<unsigned>(std::stoul(part[i]));
  };
  return {part[1], number(2), part[3], part[4], number(5), part[6], part[7]};
}

}  // namespace

TraceLog::TraceLog() {
  setenv("QOR_LOG_LEVEL", "10", 1);
  setenv("QOR_LOG_FILE", file_.path().c_str(), 1);
}

std::vector<TraceRecord> TraceLog::take() {
  std::string const text = file_.read(taken_);
  taken_ += text.size();
  std::istringstream lines(text);
  std::vector<TraceRecord> records;
  for (std::string line; std::getline(lines, line);) {
    records.push_back(parsed(line));
  }
  return records;
}

std::vector<std::string> TraceLog::takeShort() {
  std::vector<std::string> list;
  for (TraceRecord const& record : take()) {
    list.push_back(record.value == 0 ? record.text
                                     : record.function + record.text);
  }
  return list;
}

}  // namespace QorUnit
