#include "PatternNesting.h"

#include <algorithm>

#include "PatternScan.h"

namespace QorCliPipe {
namespace {

// Whether a reference to a group, or to the whole pattern, may begin at `i`.
bool mayBeReference(std::string_view pattern, std::size_t i) {
  constexpr std::string_view marks = "R&P+-0123456789";
  if (pattern.substr(i, 2) == "\\g") return true;
  return pattern.substr(i, 2) == "(?" && i + 2 < pattern.size() &&
         marks.find(pattern[i + 2]) != std::string_view::npos;
}

}  // namespace

std::size_t nestingBound(std::string_view pattern) {
  // A ")" that closes no group must not be counted as one that does: where it
  // is not sure what a character is, none is.
  std::size_t references = 0;
  std::size_t depth = 0;
  std::size_t deepest = 0;
  for (PatternScan scan(pattern); !scan.atEnd(); scan.advance()) {
    std::size_t const i = scan.position();
    if (mayBeReference(pattern, i)) ++references;
    if (pattern[i] == '(') deepest = std::max(deepest, ++depth);
    if (pattern[i] == ')' && depth > 0 && scan.isSure()) --depth;
  }
  return deepest + references;
}

}  // namespace QorCliPipe
