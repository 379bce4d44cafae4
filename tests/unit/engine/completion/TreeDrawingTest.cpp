#include <gtest/gtest.h>

#include "completion/TreeDrawing.h"

namespace QorCliEngine {
namespace {

TreeWord word(std::size_t number, std::string const& text,
              std::string const& help, std::vector<TreeWord> const& next = {}) {
  TreeWord result;
  result.number = number;
  result.text = text;
  result.help = help;
  result.next = next;
  return result;
}

// A tree with something of everything.
TreeWord sample() {
  TreeWord again = word(2, "-i", "", {word(3, "<cr>", "")});
  again.again = {word(2, "-i", ""), word(4, "-v", "")};
  TreeWord more = word(4, "-v", "Invert the sense", {});
  more.leftOut = "and 2 more";
  return word(0, "root", "", {word(1, "filter", "Keep lines", {again, more})});
}

TEST(TreeDrawingTest, lines) {
  EXPECT_EQ(TreeDrawing::lines({sample(), word(5, "other", "")}, 80),
            "root\n"
            "`-- filter        Keep lines\n"
            "    |-- -i\n"
            "    |   |-- <cr>\n"
            "    |   `-- ...   -i, -v, as above\n"
            "    `-- -v        Invert the sense\n"
            "        `-- ...   and 2 more\n"
            "other\n");
}

TEST(TreeDrawingTest, foldedHelpDoesNotBreakTheLinesOfTheTree) {
  EXPECT_EQ(
      TreeDrawing::lines({word(0, "a", "",
                               {word(1, "b", "one two", {word(2, "c", "")}),
                                word(3, "d", "three four")})},
                         14),
      "a\n"
      "|-- b  one\n"
      "|   |  two\n"
      "|   `-- c\n"
      "`-- d  three\n"
      "       four\n");
}

TEST(TreeDrawingTest, graph) {
  EXPECT_EQ(TreeDrawing::graph({sample()}),
            "digraph commands {\n"
            "  rankdir=LR;\n"
            "  node [shape=box, fontname=\"monospace\"];\n"
            "  w0 [label=\"root\", tooltip=\"\"];\n"
            "  w1 [label=\"filter\", tooltip=\"Keep lines\"];\n"
            "  w2 [label=\"-i\", tooltip=\"\"];\n"
            "  w3 [label=\"<cr>\", tooltip=\"\"];\n"
            "  w2 -> w3;\n"
            "  w2 -> w2 [style=dashed];\n"
            "  w2 -> w4 [style=dashed];\n"
            "  w1 -> w2;\n"
            "  w4 [label=\"-v\", tooltip=\"Invert the sense\"];\n"
            "  w4_more [label=\"...\", tooltip=\"and 2 more\"];\n"
            "  w4 -> w4_more;\n"
            "  w1 -> w4;\n"
            "  w0 -> w1;\n"
            "}\n");
}

TEST(TreeDrawingTest, textsInAGraphAreQuoted) {
  EXPECT_NE(TreeDrawing::graph({word(0, "a\"b\\c\nd", "")})
                .find("label=\"a\\\"b\\\\c d\""),
            std::string::npos);
}

}  // namespace
}  // namespace QorCliEngine
