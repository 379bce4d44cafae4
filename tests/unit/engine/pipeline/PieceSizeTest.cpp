#include <gtest/gtest.h>

#include <string>

#include "pipeline/PieceSize.h"

namespace QorCliEngine {
namespace {

using std::chrono::milliseconds;

// `count` lines of 16 bytes.
std::string lines(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += "fifteen letters\n";
  return text;
}

TEST(PieceSizeTest, beginsSmallWithWholeLines) {
  std::string const tooLong(PieceSize::kFirst, 'x');
  struct {
    std::string text;
    std::size_t length;
  } const rows[] = {
      {"", 0},
      {"a\nb\n", 4},
      {lines(16), 256},
      {lines(17), 256},
      {"a\n" + lines(16), 242},
      {tooLong + "\na\n", 257},
      {"a\n" + tooLong + '\n', 2},
      {tooLong + tooLong, 512},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(PieceSize().cut(row.text).size(), row.length);
  }
}

TEST(PieceSizeTest, followsTheTimeThatAPieceTakes) {
  std::string const text = lines(PieceSize::kLargest / 16 + 1);
  PieceSize size;
  for (std::size_t length = 256; length < PieceSize::kLargest; length *= 2) {
    EXPECT_EQ(size.cut(text).size(), length);
    size.note(milliseconds(24));
  }
  size.note(milliseconds(0));
  for (milliseconds const time : {milliseconds(25), milliseconds(100)}) {
    EXPECT_EQ(size.cut(text).size(), PieceSize::kLargest);
    size.note(time);
  }
  for (std::size_t length = PieceSize::kLargest; length >= 16; length /= 2) {
    EXPECT_EQ(size.cut(text).size(), length);
    size.note(milliseconds(101));
  }
  // A line is the least.
  for (int i = 0; i < 10; ++i) size.note(milliseconds(101));
  EXPECT_EQ(size.cut(text).size(), 16U);
  for (int i = 0; i < 5; ++i) size.note(milliseconds(0));
  EXPECT_EQ(size.cut(text).size(), 32U);
}

}  // namespace
}  // namespace QorCliEngine
