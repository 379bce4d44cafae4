#include <gtest/gtest.h>

#include "output/Layout.h"

namespace QorCliEngine {
namespace {

TEST(LayoutTest, inColumns) {
  using Texts = std::vector<std::string>;
  struct {
    Texts texts;
    std::size_t width;
    std::string result;
  } const rows[] = {
      {{"a", "b", "c"}, 20, "a  b  c\n"},
      {{"a", "b", "c"}, 5, "a  c\nb\n"},
      {{"a", "b", "c"}, 4, "a\nb\nc\n"},
      {{"long", "b"}, 20, "long  b\n"},
      {{"wider than all"}, 4, "wider than all\n"},
      {{"a\tb", "c\n"}, 20, "a^Ib  c^J\n"},
      {{"\033[2J", "\302\233x\377", "\233"}, 40, "^[[2J   M-^[x\377  M-^[\n"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(Layout::inColumns(row.texts, row.width), row.result);
  }
}

TEST(LayoutTest, inTwoColumns) {
  struct {
    std::vector<Layout::Row> texts;
    std::size_t width;
    std::string result;
  } const rows[] = {
      {{}, 20, ""},
      {{{"a", "one"}, {"bb", "two"}}, 20, "a   one\nbb  two\n"},
      {{{"a", ""}}, 20, "a\n"},
      {{{"\033", "o\302\233ne\ttwo\a"}}, 30, "^[  oM-^[ne two^G\n"},
      {{{"a", "one two three"}}, 12, "a  one two\n   three\n"},
      {{{"a", "one\ntwo"}}, 20, "a  one\n   two\n"},
      {{{"a", "x"}, {"long word", "y"}}, 12, "a  x\nlong word\n   y\n"},
      {{{"a", "unbreakable"}}, 10, "a  unbrea\n   kable\n"},
      {{{"a", "one two three", "|"}}, 12, "a  one two\n|  three\n"},
      {{{"long word", "y", "|"}}, 12, "long word\n| y\n"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(Layout::inTwoColumns(row.texts, row.width), row.result);
  }
}

}  // namespace
}  // namespace QorCliEngine
