// The matcher finds what Poco's regular expressions find, on lines that they do
// not give up on, and refuses what they refuse.

#include <Poco/Exception.h>
#include <Poco/RegularExpression.h>

#include <cstdlib>
#include <optional>

#include "FuzzInput.h"
#include "LineMatcher.h"

namespace {

// Patterns and lines that Poco can be trusted with.
constexpr std::size_t kLongestPattern = 60;  // bytes
constexpr std::size_t kLongestLine = 200;

// Whether an expression of that class can be made.
template <class Expression, class... Arguments>
bool accepted(Arguments const&... arguments) {
  try {
    Expression const expression(arguments...);
    return true;
  } catch (Poco::Exception const&) {
    return false;
  }
}

// What Poco says; nothing when it refuses the pattern or gives up on the line.
std::optional<bool> saidByPoco(std::string const& pattern, bool ignoreCase,
                               std::string const& line) {
  try {
    Poco::RegularExpression const expression(
        pattern, QorCliPipe::pocoOptions(ignoreCase), true);
    std::string matched;
    expression.extract(line, matched, 0);
    return !matched.empty();
  } catch (Poco::Exception const&) {
    return std::nullopt;
  }
}

std::optional<bool> saidByMatcher(std::string const& pattern, bool ignoreCase,
                                  std::string const& line) {
  try {
    QorCliPipe::LineMatcher matcher(pattern, ignoreCase);
    return matcher.matches(line);
  } catch (Poco::Exception const&) {
    return std::nullopt;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data,
                                      std::size_t size) {
  qor_fuzz::FuzzInput bytes(data, size);
  bool const ignoreCase = bytes.byte() % 2 != 0;
  std::string const pattern = bytes.line();
  std::string const line = bytes.line();
  if (pattern.size() > kLongestPattern || line.size() > kLongestLine) return 0;
  if (accepted<Poco::RegularExpression>(
          pattern, QorCliPipe::pocoOptions(ignoreCase), true) !=
      accepted<QorCliPipe::LineMatcher>(pattern, ignoreCase)) {
    std::abort();
  }
  std::optional<bool> const expected = saidByPoco(pattern, ignoreCase, line);
  // Where Poco gives up, the machine code may still know the answer.
  if (!expected) return 0;
  if (saidByMatcher(pattern, ignoreCase, line) != expected) std::abort();
  return 0;
}
