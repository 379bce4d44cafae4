#ifndef QOR_CLI_ENGINE_LAYOUT_H
#define QOR_CLI_ENGINE_LAYOUT_H

#include <cstddef>
#include <string>
#include <vector>

namespace QorCliEngine {

// How lists are laid out on a terminal. Widths are numbers of character cells;
// no line is longer than `width` less 1, for a terminal may go to the next row
// by itself after the last cell. Texts are in the locale's encoding; control
// characters in them are made visible.
namespace Layout {

constexpr std::size_t kDefaultWidth = 80;

// The number of cells that `text` takes.
std::size_t width(std::string const& text);

// `texts` in columns, filled downwards; each row with its line feed.
std::string inColumns(std::vector<std::string> const& texts, std::size_t width);

// Two columns: a text, and what it means, folded at blanks and broken at its
// line feeds.
struct Row {
  std::string text;
  std::string meaning;
  std::string continued = {};  // the first column beside more of the meaning
};
std::string inTwoColumns(std::vector<Row> const& rows, std::size_t width);

}  // namespace Layout
}  // namespace QorCliEngine

#endif
