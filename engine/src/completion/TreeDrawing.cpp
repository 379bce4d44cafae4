#include "completion/TreeDrawing.h"

#include "output/Layout.h"

namespace QorCliEngine {
namespace TreeDrawing {
namespace {

constexpr char kMore[] = "...";  // in place of words that are not drawn

// What stands in front of a word, and of what is drawn below it.
struct Branch {
  char const* word;
  char const* below;
};
constexpr Branch kMiddle{"|-- ", "|   "};
constexpr Branch kLast{"`-- ", "    "};

std::string listed(std::vector<TreeWord> const& words) {
  std::string list;
  for (TreeWord const& word : words) list += word.text + ", ";
  return list + "as above";
}

// The words below a word, and "..." with what is not drawn there.
std::vector<TreeWord> branches(TreeWord const& word) {
  std::vector<TreeWord> all = word.next;
  TreeWord more;
  more.text = kMore;
  if (!word.again.empty()) {
    more.help = listed(word.again);
    all.push_back(more);
  }
  if (!word.leftOut.empty()) {
    more.help = word.leftOut;
    all.push_back(more);
  }
  return all;
}

// As deep as the trees, which are limited.
void draw(TreeWord const& word, std::string const& front,
          std::string const& below, std::vector<Layout::Row>& rows) {
  std::vector<TreeWord> const all = branches(word);
  rows.push_back(
      {front + word.text, word.help, below + (all.empty() ? "" : "|")});
  for (TreeWord const& next : all) {
    Branch const& branch = &next == &all.back() ? kLast : kMiddle;
    draw(next, below + branch.word, below + branch.below, rows);
  }
}

std::string quoted(std::string const& text) {
  std::string result = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
  }
  return result + '"';
}

std::string identifier(TreeWord const& word) {
  return 'w' + std::to_string(word.number);
}

std::string node(std::string const& name, std::string const& label,
                 std::string const& tooltip) {
  return "  " + name + " [label=" + quoted(label) +
         ", tooltip=" + quoted(tooltip) + "];\n";
}

std::string edge(TreeWord const& word, std::string const& to) {
  return "  " + identifier(word) + " -> " + to;
}

std::string graphOf(TreeWord const& word) {
  std::string text = node(identifier(word), word.text, word.help);
  for (TreeWord const& next : word.next) {
    text += graphOf(next) + edge(word, identifier(next)) + ";\n";
  }
  for (TreeWord const& again : word.again) {
    text += edge(word, identifier(again)) + " [style=dashed];\n";
  }
  if (!word.leftOut.empty()) {
    std::string const more = identifier(word) + "_more";
    text += node(more, kMore, word.leftOut) + edge(word, more) + ";\n";
  }
  return text;
}

}  // namespace

std::string lines(std::vector<TreeWord> const& trees, std::size_t width) {
  std::vector<Layout::Row> rows;
  for (TreeWord const& tree : trees) draw(tree, "", "", rows);
  return Layout::inTwoColumns(rows, width);
}

std::string graph(std::vector<TreeWord> const& trees) {
  std::string text =
      "digraph commands {\n"
      "  rankdir=LR;\n"
      "  node [shape=box, fontname=\"monospace\"];\n";
  for (TreeWord const& tree : trees) text += graphOf(tree);
  return text + "}\n";
}

}  // namespace TreeDrawing
}  // namespace QorCliEngine
