#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SpareLines.h"

namespace {

using QorCliPipe::appendLine;
using QorCliPipe::keepAsSpare;
using QorCliPipe::kMostSpareBytes;
using Lines = std::vector<std::string>;

std::string const kLong(100, 'x');  // has memory of its own

TEST(SpareLinesTest, linesHaveTheirTextsWhateverTheirMemoryHeld) {
  for (int call = 0; call < 3; ++call) {
    Lines lines;
    for (std::string const& line : {kLong, std::string("short"), kLong + '\n'})
      appendLine(line, lines);
    EXPECT_EQ((Lines{kLong, "short", kLong + '\n'}), lines);
    keepAsSpare(lines);
    EXPECT_TRUE(lines.empty());
  }
}

TEST(SpareLinesTest, theirMemoryIsUsedAgain) {
  Lines lines{kLong, kLong, kLong, kLong};
  char const* const memory = lines.back().data();
  keepAsSpare(lines);
  Lines next;
  appendLine(kLong, next);
  EXPECT_EQ(memory, next.front().data());
}

TEST(SpareLinesTest, tooMuchMemoryIsNotKept) {
  std::size_t const size = kMostSpareBytes / 8 + 1;
  Lines lines(8, std::string(size, 'x'));
  keepAsSpare(lines);
  EXPECT_TRUE(lines.empty());
  Lines next;
  appendLine(kLong, next);
  EXPECT_LT(next.front().capacity(), size);
}

}  // namespace
