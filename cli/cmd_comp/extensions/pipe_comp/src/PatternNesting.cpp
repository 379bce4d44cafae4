#include "PatternNesting.h"

#include <algorithm>

namespace QorCliPipe {
namespace {

// The index behind the escape that begins at `i`.
std::size_t skipEscape(std::string_view pattern, std::size_t i) {
  if (pattern.substr(i, 2) == "\\c") return i + 3;
  if (pattern.substr(i, 2) != "\\Q") return i + 2;
  std::size_t const end = pattern.find("\\E", i + 2);
  return end == std::string_view::npos ? pattern.size() : end + 2;
}

// The index behind the character class that begins at `i`; that of its bracket
// when it has an escape or a bracket in it, and is better left alone.
std::size_t skipPlainClass(std::string_view pattern, std::size_t i) {
  std::size_t end = i + 1;
  if (pattern.substr(end, 1) == "^") ++end;
  if (pattern.substr(end, 1) == "]") ++end;
  end = pattern.find_first_of("[]\\", end);
  bool const plain = end != std::string_view::npos && pattern[end] == ']';
  return plain ? end + 1 : i;
}

// Whether a reference to a group, or to the whole pattern, may begin at `i`.
bool mayBeReference(std::string_view pattern, std::size_t i) {
  constexpr std::string_view marks = "R&P+-0123456789";
  if (pattern.substr(i, 2) == "\\g") return true;
  return pattern.substr(i, 2) == "(?" && i + 2 < pattern.size() &&
         marks.find(pattern[i + 2]) != std::string_view::npos;
}

// Whether `rest`, of at least three characters, looks like a call of a group.
bool isGroupCall(std::string_view rest) {
  if (rest.substr(0, 2) == "\\g") return rest[2] == '<' || rest[2] == '\'';
  if (rest.substr(0, 2) != "(?") return false;
  auto const isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (rest[2] == 'R' || rest[2] == '&' || isDigit(rest[2])) return true;
  if (rest.size() < 4) return false;
  bool const relative = rest[2] == '+' || rest[2] == '-';
  return (relative && isDigit(rest[3])) || rest.substr(2, 2) == "P>";
}

}  // namespace

std::size_t nestingBound(std::string_view pattern) {
  // A ")" that closes no group must not be counted as one that does. Behind a
  // class that is hard to read, or where there may be comments, none is.
  bool closesAreSure = pattern.find('#') == std::string_view::npos;
  std::size_t references = 0;
  std::size_t depth = 0;
  std::size_t deepest = 0;
  std::size_t i = 0;
  while (i < pattern.size()) {
    char const c = pattern[i];
    if (mayBeReference(pattern, i)) ++references;
    if (c == '\\') {
      i = skipEscape(pattern, i);
      continue;
    }
    if (c == '[') {
      std::size_t const behind = skipPlainClass(pattern, i);
      closesAreSure = closesAreSure && behind != i;
      i = std::max(behind, i + 1);
      continue;
    }
    if (c == '(') deepest = std::max(deepest, ++depth);
    if (c == ')' && depth > 0 && closesAreSure) --depth;
    ++i;
  }
  return deepest + references;
}

std::size_t groupCalls(std::string_view pattern) {
  std::size_t calls = 0;
  for (std::size_t i = 0; i + 2 < pattern.size(); ++i) {
    if (isGroupCall(pattern.substr(i))) ++calls;
  }
  return calls;
}

}  // namespace QorCliPipe
