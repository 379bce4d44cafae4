#include "diagnostics/FailureReason.h"

#include <regex>
#include <sstream>
#include <string_view>
#include <utility>

#include "diagnostics/LogRecord.h"

namespace QorCliEngine {
namespace {

constexpr unsigned kErrorSeverity = 4;
constexpr std::string_view kEndOfQuote = "\": ";
constexpr std::string_view kAtOffset = " at offset ";
constexpr std::size_t kMaxDigits = 9;  // of an offset, which fit in any integer

bool isError(LogRecord const& record) {
  return record.kind == LogRecord::Kind::kSeverity &&
         record.value <= kErrorSeverity;
}

std::string withoutFullStop(std::string const& sentence) {
  bool const stops = !sentence.empty() && sentence.back() == '.';
  return sentence.substr(0, sentence.size() - (stops ? 1 : 0));
}

// By hand: std::regex recurses for each character, and a record may be long.
std::optional<FailureReason::Place> placeIn(std::string const& sentence) {
  std::size_t const behind = sentence.rfind(kAtOffset);
  if (behind == std::string::npos || behind < kEndOfQuote.size()) {
    return std::nullopt;
  }
  std::string const digits = sentence.substr(behind + kAtOffset.size());
  bool const isNumber =
      !digits.empty() && digits.size() <= kMaxDigits &&
      digits.find_first_not_of("0123456789") == std::string::npos;
  std::size_t const begin = sentence.find('"') + 1;
  std::size_t const end =
      sentence.rfind(kEndOfQuote, behind - kEndOfQuote.size());
  if (!isNumber || end == std::string::npos || end < begin) return std::nullopt;
  return FailureReason::Place{sentence.substr(begin, end - begin),
                              std::stoul(digits)};
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
