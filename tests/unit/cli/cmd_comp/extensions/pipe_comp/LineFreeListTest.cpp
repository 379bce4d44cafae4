#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "LineFreeList.h"

namespace {

using QorCliPipe::appendLine;
using QorCliPipe::kMaxFreeListBytes;
using QorCliPipe::recycleLines;
using Lines = std::vector<std::string>;

std::string const kLong(100, 'x');  // on the heap

TEST(LineFreeListTest, keepsNoStaleText) {
  for (int call = 0; call < 3; ++call) {
    Lines lines;
    for (std::string const& line : {kLong, std::string("short"), kLong + '\n'})
      appendLine(line, lines);
    EXPECT_EQ((Lines{kLong, "short", kLong + '\n'}), lines);
    recycleLines(lines);
    EXPECT_TRUE(lines.empty());
  }
}

TEST(LineFreeListTest, reusesMemory) {
  Lines lines{kLong, kLong, kLong, kLong};
  char const* const memory = lines.back().data();
  recycleLines(lines);
  Lines next;
  appendLine(kLong, next);
  EXPECT_EQ(memory, next.front().data());
}

TEST(LineFreeListTest, limitsItsMemory) {
  std::size_t const size = kMaxFreeListBytes / 8 + 1;
  Lines lines(8, std::string(size, 'x'));
  recycleLines(lines);
  EXPECT_TRUE(lines.empty());
  Lines next;
  appendLine(kLong, next);
  EXPECT_LT(next.front().capacity(), size);
}

}  // namespace
