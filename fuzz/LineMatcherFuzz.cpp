// The matcher refuses what Poco's regular expressions refuse, and finds what
// they find: for patterns that they compile soon, on lines that they decide
// soon. Others would take most of the time.

#include <Poco/Exception.h>
#include <Poco/RegularExpression.h>

#include <cstdlib>
#include <memory>
#include <optional>

#include "CompileDemand.h"
#include "FuzzInput.h"
#include "LineMatcher.h"

namespace {

// Patterns and lines that Poco can be trusted with.
constexpr std::size_t kLongestPattern = 60;  // bytes
constexpr std::size_t kLongestLine = 200;

// What is read when calls are followed: compiling takes a millisecond at most.
constexpr std::size_t kMostReach = 64 * 1024;

// Within so many steps a line is decided soon.
constexpr char const* kLimit = "(*LIMIT_MATCH=50000)";

using QorCliPipe::LineMatcher;
using QorCliPipe::pocoOptions;

using Expression = std::unique_ptr<Poco::RegularExpression>;
using Matcher = std::unique_ptr<LineMatcher>;

// Null when the pattern is refused.
Expression expressionOf(std::string const& pattern, bool ignoreCase) {
  try {
    return std::make_unique<Poco::RegularExpression>(
        pattern, pocoOptions(ignoreCase), true);
  } catch (Poco::Exception const&) {
    return nullptr;
  }
}

Matcher matcherOf(std::string const& pattern, bool ignoreCase) {
  try {
    return std::make_unique<LineMatcher>(pattern, ignoreCase);
  } catch (Poco::Exception const&) {
    return nullptr;
  }
}

// Nothing when the line is given up on.
std::optional<bool> said(Poco::RegularExpression const& expression,
                         std::string const& line) {
  try {
    std::string matched;
    expression.extract(line, matched, 0);
    return !matched.empty();
  } catch (Poco::Exception const&) {
    return std::nullopt;
  }
}

std::optional<bool> said(LineMatcher& matcher, std::string const& line) {
  try {
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
  if (QorCliPipe::compileDemand(pattern, kMostReach).reach == kMostReach) {
    return 0;
  }
  Expression const expression = expressionOf(pattern, ignoreCase);
  Matcher const matcher = matcherOf(pattern, ignoreCase);
  if ((expression == nullptr) != (matcher == nullptr)) std::abort();
  if (!expression) return 0;
  Expression const limited = expressionOf(kLimit + pattern, ignoreCase);
  if (!limited) std::abort();
  std::optional<bool> const expected = said(*limited, line);
  // Where Poco gives up, the matcher may still know the answer.
  if (!expected) return 0;
  if (said(*matcher, line) != expected) std::abort();
  return 0;
}
