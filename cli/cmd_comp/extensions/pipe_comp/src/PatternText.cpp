#include "PatternText.h"

namespace QorCliPipe {
namespace {

// The index behind a character of a class, an escape or a named class, "[:"
// name ":]"; `i` where that is hard to read.
std::size_t skipClassItem(std::string_view pattern, std::size_t i) {
  std::string_view const mark = pattern.substr(i, 2);
  if (mark == "\\Q" || mark == "\\E" || mark == "[." || mark == "[=") return i;
  if (mark[0] == '\\') return skipEscape(pattern, i);
  if (mark != "[:") return i + 1;
  std::size_t const end =
      pattern.find_first_not_of("^abcdefghijklmnopqrstuvwxyz", i + 2);
  bool const isName =
      end != std::string_view::npos && pattern.substr(end, 2) == ":]";
  return isName ? end + 2 : i;
}

// The pattern behind the options at its beginning, such as "(*UTF8)".
std::string_view withoutOptions(std::string_view pattern) {
  constexpr std::string_view characters =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZ_=0123456789";
  while (pattern.substr(0, 2) == "(*") {
    std::size_t const end = pattern.find_first_not_of(characters, 2);
    if (end == std::string_view::npos || pattern[end] != ')') break;
    pattern.remove_prefix(end + 1);
  }
  return pattern;
}

}  // namespace

bool mayHideText(std::string_view pattern) {
  pattern = withoutOptions(pattern);
  return pattern.find('#') != std::string_view::npos ||
         pattern.find("(*") != std::string_view::npos ||
         pattern.find("(?C") != std::string_view::npos;
}

std::size_t skipEscape(std::string_view pattern, std::size_t i) {
  if (pattern.substr(i, 2) == "\\c") return i + 3;
  if (pattern.substr(i, 2) != "\\Q") return i + 2;
  std::size_t const end = pattern.find("\\E", i + 2);
  return end == std::string_view::npos ? pattern.size() : end + 2;
}

std::size_t skipPlainClass(std::string_view pattern, std::size_t i) {
  std::size_t end = i + 1;
  if (pattern.substr(end, 1) == "^") ++end;
  if (pattern.substr(end, 1) == "]") ++end;
  while (end < pattern.size() && pattern[end] != ']') {
    std::size_t const behind = skipClassItem(pattern, end);
    if (behind == end) return i;
    end = behind;
  }
  return end < pattern.size() ? end + 1 : i;
}

}  // namespace QorCliPipe
