// The matcher accepts, refuses and finds what Poco's regular expressions do.

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

// What Poco says; nothing when it refuses the pattern or gives up on the line.
std::optional<bool> saidByPoco(std::string const& pattern, bool ignoreCase,
                               std::string const& line) {
  try {
    Poco::RegularExpression const expression(pattern, ignoreCase ? 1 : 0, true);
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
  std::optional<bool> const expected = saidByPoco(pattern, ignoreCase, line);
  // Where Poco gives up, the machine code may still know the answer.
  if (!expected) return 0;
  if (saidByMatcher(pattern, ignoreCase, line) != expected) std::abort();
  return 0;
}
