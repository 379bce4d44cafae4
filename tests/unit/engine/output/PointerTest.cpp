#include <gtest/gtest.h>

#include "output/Pointer.h"

namespace QorCliEngine {
namespace {

TEST(PointerTest, standsBelowTheEndOfTheBeginning) {
  struct {
    std::string before;
    std::string line;
    std::string words;
    std::string shown;
  } const rows[] = {
      {"", "bogus", "", "  bogus\n  ^\n"},
      {"show ", "show bogus", "expected x",
       "  show bogus\n       ^ expected x\n"},
      {"a\t", "a\tbogus", "", "  a^Ibogus\n     ^\n"},
      {"a\nb ", "a\nb bogus", "", "  a^Jb bogus\n       ^\n"},
      {"a\r\n", "a\r\nbogus", "", "  a^M^Jbogus\n       ^\n"},
      {"", "bogus", "a\tb\n", "  bogus\n  ^ a^Ib^J\n"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(Pointer::behind(row.before, row.line, row.words, 80), row.shown);
  }
}

TEST(PointerTest, isLeftOutWhereTheLineIsTooWide) {
  EXPECT_EQ(Pointer::behind("", "bogus", "a\tb", 7), "  a^Ib\n");
  EXPECT_EQ(Pointer::behind("", "bogus", "", 7), "");
  EXPECT_EQ(Pointer::behind("", "bogus", "", 8), "  bogus\n  ^\n");
}

}  // namespace
}  // namespace QorCliEngine
