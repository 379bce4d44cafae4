#include "output/Pointer.h"

#include "output/ControlCharacters.h"
#include "output/Layout.h"

namespace QorCliEngine {
namespace {

constexpr std::size_t kIndent = 2;  // cells

}  // namespace

std::string Pointer::behind(std::string const& before, std::string const& line,
                            std::string const& words, std::size_t width) {
  std::string const shown = ControlCharacters::visibleInLine(line);
  std::size_t const mark =
      Layout::width(ControlCharacters::visibleInLine(before));
  std::string const shownWords = ControlCharacters::visibleInLine(words);
  std::string const indent(kIndent, ' ');
  std::string const end = words.empty() ? "\n" : ' ' + shownWords + '\n';
  if (Layout::width(shown) + kIndent >= width) {
    return words.empty() ? "" : indent + shownWords + '\n';
  }
  return indent + shown + '\n' + indent + std::string(mark, ' ') + '^' + end;
}

}  // namespace QorCliEngine
