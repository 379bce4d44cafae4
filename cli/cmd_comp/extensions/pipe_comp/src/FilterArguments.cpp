#include "FilterArguments.h"

#include <Poco/String.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "Tokenizer.h"

namespace QorCliPipe {
namespace {

constexpr char kCommandNotFound[] = "Command not found\n";

std::string invalidNumber(std::string const& value, std::string const& option) {
  constexpr unsigned lowest = 0;
  constexpr unsigned highest = std::numeric_limits<unsigned>::max();
  return "Invalid value '" + value + "' for integer parameter '" + option +
         "'. Valid values are in range : [" + std::to_string(lowest) + "," +
         std::to_string(highest) + "]\n";
}

// Saturates where the conversion to a 32-bit long does, on every platform.
int lineCount(std::string const& digits) {
  constexpr long highest = std::numeric_limits<int>::max();
  return static_cast<int>(
      std::min(std::strtol(digits.c_str(), nullptr, 10), highest));
}

// Takes the pattern from `token`. Returns an empty string or the error text.
// The length that excuses a dash is that of the token, quotes included.
std::string takePattern(std::string token, FilterArguments& arguments) {
  if (arguments.patternGiven) return kCommandNotFound;
  arguments.pattern = QorCliUtilities::trimQuotes(token);
  arguments.patternGiven = true;
  bool const looksLikeOption =
      token.size() > 1 && arguments.pattern.rfind('-', 0) == 0;
  return looksLikeOption ? kCommandNotFound : "";
}

}  // namespace

bool isDecimalNumber(std::string const& text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return c >= '0' && c <= '9'; });
}

std::string parseFilterArguments(std::vector<std::string> const& tokens,
                                 FilterArguments& arguments) {
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    std::string const option = Poco::toLower(tokens[i]);
    bool const isAfter = option == "-a" || option == "--after";
    bool const isBefore = option == "-b" || option == "--before";
    if (option == "-i" || option == "--ignore") {
      arguments.ignoreCase = true;
    } else if (option == "-v" || option == "--invert") {
      arguments.invert = true;
    } else if (isAfter || isBefore) {
      if (i + 1 == tokens.size()) return kCommandNotFound;
      std::string const& value = tokens[i + 1];
      if (!isDecimalNumber(value)) {
        return invalidNumber(value, tokens[i]);
      }
      (isAfter ? arguments.after : arguments.before) = lineCount(value);
      ++i;
    } else {
      std::string error = takePattern(tokens[i], arguments);
      if (!error.empty()) return error;
    }
  }
  return arguments.patternGiven ? "" : kCommandNotFound;
}

}  // namespace QorCliPipe
