#include "output/Layout.h"

#include <wchar.h>

#include <algorithm>
#include <cwchar>

#include "output/ControlCharacters.h"

namespace QorCliEngine {
namespace Layout {
namespace {

constexpr std::size_t kGap = 2;  // cells between columns
// The second column begins no further to the right than this part of the width.
constexpr std::size_t kFirstColumnShare = 2;

// One character of a text: its bytes, and the cells that it takes.
struct Character {
  std::string bytes;
  std::size_t cells;
};

Character characterAt(std::string const& text, std::size_t position) {
  std::mbstate_t state{};
  wchar_t wide = 0;
  std::size_t const size =
      std::mbrtowc(&wide, &text[position], text.size() - position, &state);
  bool const decoded = size != 0 && size <= text.size() - position;
  if (!decoded) return {text.substr(position, 1), 1};
  int const cells = ::wcwidth(wide);
  return {text.substr(position, size),
          cells < 0 ? 1 : static_cast<std::size_t>(cells)};
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

std::string padded(std::string const& text, std::size_t cells) {
  std::size_t const taken = width(text);
  return taken < cells ? text + std::string(cells - taken, ' ') : text;
}

// Puts words into lines of a limited width.
class Folder {
 public:
  explicit Folder(std::size_t cells) : cells_(cells) {}

  void word(std::string const& word) {
    std::size_t const taken = width(word);
    if (used_ != 0 && used_ + 1 + taken > cells_) newLine();
    if (used_ != 0) add({" ", 1});
    for (std::size_t i = 0; i < word.size();) {
      Character const character = characterAt(word, i);
      if (used_ != 0 && used_ + character.cells > cells_) newLine();
      add(character);
      i += character.bytes.size();
    }
  }

  void newLine() {
    lines_.emplace_back();
    used_ = 0;
  }

  std::vector<std::string> const& lines() const { return lines_; }

 private:
  void add(Character const& character) {
    lines_.back() += character.bytes;
    used_ += character.cells;
  }

  std::size_t cells_;
  std::size_t used_ = 0;
  std::vector<std::string> lines_{""};
};

std::vector<std::string> folded(std::string const& text, std::size_t cells) {
  Folder folder(cells);
  std::string word;
  for (char c : text + ' ') {
    if (!isControl(c) && c != ' ') {
      word += c;
      continue;
    }
    if (!word.empty()) folder.word(word);
    word.clear();
    if (c == '\n') folder.newLine();
  }
  return folder.lines();
}

std::size_t widest(std::vector<std::string> const& texts) {
  std::size_t most = 0;
  for (std::string const& text : texts) most = std::max(most, width(text));
  return most;
}

std::vector<Row> visible(std::vector<Row> rows) {
  for (Row& row : rows) {
    row.text = ControlCharacters::visibleInLine(row.text);
    row.meaning = ControlCharacters::visible(row.meaning);
  }
  return rows;
}

// The width of the first of two columns: what all texts fit in, unless they
// would leave too little room for the second one.
std::size_t firstColumn(std::vector<Row> const& rows, std::size_t width) {
  std::size_t const limit = width / kFirstColumnShare;
  std::size_t most = 0;
  for (Row const& row : rows) {
    std::size_t const cells = Layout::width(row.text) + kGap;
    if (cells <= limit) most = std::max(most, cells);
  }
  return most == 0 ? kGap : most;
}

}  // namespace

std::size_t width(std::string const& text) {
  std::size_t cells = 0;
  for (std::size_t i = 0; i < text.size();) {
    Character const character = characterAt(text, i);
    cells += character.cells;
    i += character.bytes.size();
  }
  return cells;
}

std::string inColumns(std::vector<std::string> const& texts,
                      std::size_t width) {
  std::vector<std::string> clean;
  clean.reserve(texts.size());
  for (std::string const& text : texts) {
    clean.push_back(ControlCharacters::visibleInLine(text));
  }
  std::size_t const cells = widest(clean) + kGap;
  std::size_t const columns =
      std::max<std::size_t>(1, (width - 1 + kGap) / cells);
  std::size_t const rows = (clean.size() + columns - 1) / columns;
  std::string result;
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = row; i < clean.size(); i += rows) {
      bool const last = i + rows >= clean.size();
      result += last ? clean[i] : padded(clean[i], cells);
    }
    result += '\n';
  }
  return result;
}

std::string inTwoColumns(std::vector<Row> const& texts, std::size_t width) {
  std::vector<Row> const rows = visible(texts);
  std::size_t const first = firstColumn(rows, width);
  std::size_t const second = width - 1 > first ? width - 1 - first : 1;
  std::string result;
  for (Row const& row : rows) {
    std::string line = row.text;
    if (Layout::width(line) + kGap > first && !row.meaning.empty()) {
      result += line + '\n';
      line = row.continued;
    }
    for (std::string const& part : folded(row.meaning, second)) {
      result += part.empty() ? line : padded(line, first) + part;
      result += '\n';
      line = row.continued;
    }
  }
  return result;
}

}  // namespace Layout
}  // namespace QorCliEngine
