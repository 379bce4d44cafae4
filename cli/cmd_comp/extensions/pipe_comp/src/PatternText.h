#ifndef QOR_CLI_PATTERN_TEXT_H
#define QOR_CLI_PATTERN_TEXT_H

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace QorCliPipe {

// Returns the index behind the escape that begins at `i`, which may be beyond
// the end of the pattern. \Q and the text up to \E is one escape.
std::size_t skipEscape(std::string_view pattern, std::size_t i);

// Returns the index behind the character class that begins at `i`; `i` when it
// is never closed, or has something in it that is better left alone.
std::size_t skipPlainClass(std::string_view pattern, std::size_t i);

// Whether a text in the pattern, a comment or the name of a verb or callout,
// may look like something else. Options at the pattern's beginning have none.
bool mayHideText(std::string_view pattern);

// Calls `visit(i, sure)` with the index of each character of a regular
// expression that is no part of an escape or a character class, in their order,
// and with that of the character that begins an escape. From a class on that is
// hard to read, or from the beginning where there may be hidden texts, classes
// and \Q...\E texts are not left out, and `sure` is false. Takes time
// proportional to the pattern, and constant stack.
template <typename Visit>
void visitOutsideClasses(std::string_view pattern, Visit visit) {
  bool sure = !mayHideText(pattern);
  std::size_t i = 0;
  while (i < pattern.size()) {
    if (sure && pattern[i] == '[') {
      std::size_t const behind = skipPlainClass(pattern, i);
      sure = behind != i;
      i = std::max(behind, i + 1);
      continue;
    }
    visit(i, sure);
    if (pattern[i] != '\\') {
      ++i;
    } else {
      i = sure ? skipEscape(pattern, i) : i + 2;
    }
  }
}

}  // namespace QorCliPipe

#endif
