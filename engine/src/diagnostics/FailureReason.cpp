#include "diagnostics/FailureReason.h"

#include <regex>
#include <sstream>
#include <utility>

#include "diagnostics/LogRecord.h"

namespace QorCliEngine {
namespace {

constexpr unsigned kErrorSeverity = 4;

bool isError(LogRecord const& record) {
  return record.kind == LogRecord::Kind::kSeverity &&
         record.value <= kErrorSeverity;
}

std::string withoutFullStop(std::string const& sentence) {
  bool const stops = !sentence.empty() && sentence.back() == '.';
  return sentence.substr(0, sentence.size() - (stops ? 1 : 0));
}

std::optional<FailureReason::Place> placeIn(std::string const& sentence) {
  static std::regex const form("[^\"]*\"(.*)\": .* at offset ([0-9]{1,9})");
  std::smatch found;
  if (!std::regex_match(sentence, found, form)) return std::nullopt;
  return FailureReason::Place{found[1], std::stoul(found[2])};
}

}  // namespace

std::string FailureReason::Place::inBytes() const {
  static std::regex const escape("\\\\x([0-9A-F]{2})");
  std::string bytes;
  std::size_t taken = 0;
  for (std::sregex_iterator each(text.begin(), text.end(), escape), end;
       each != end; ++each) {
    auto const begin = static_cast<std::size_t>(each->position());
    bytes += text.substr(taken, begin - taken);
    bytes += static_cast<char>(std::stoi((*each)[1], nullptr, 16));
    taken = begin + static_cast<std::size_t>(each->length());
  }
  return bytes + text.substr(taken);
}

std::optional<FailureReason> FailureReason::takeFrom(std::string& records) {
  std::optional<FailureReason> reason;
  std::size_t begin = 0;  // of its line
  std::size_t size = 0;
  std::istringstream lines(records);
  std::size_t end = 0;
  for (std::string line; std::getline(lines, line);) {
    std::size_t const lineBegin = std::exchange(end, end + line.size() + 1);
    auto const record = LogRecord::read(line);
    if (!record || !isError(*record)) continue;
    reason = FailureReason{withoutFullStop(record->text), std::nullopt};
    begin = lineBegin;
    size = end - lineBegin;
  }
  records.erase(begin, size);
  if (reason) reason->place = placeIn(reason->sentence);
  return reason;
}

}  // namespace QorCliEngine
