#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "sources/LineChunker.h"

namespace QorCliEngine {
namespace {

void fill(LineChunker& chunker, std::string_view text) {
  chunker.fill(
      [&](char* place, std::size_t size) { return text.copy(place, size); });
}

std::string terminated(std::string_view lines) {
  EXPECT_EQ(lines.data()[lines.size()], '\0');
  return std::string(lines);
}

TEST(LineChunkerTest, takesWholeLinesAndKeepsTheRest) {
  struct {
    std::string_view added;
    std::string lines;
  } const rows[] = {
      {"", ""},
      {"a", ""},
      {"b\nc", "ab\n"},
      {"\n", "c\n"},
      {"\n\n", "\n\n"},
      {"d\ne\nf", "d\ne\n"},
      {{"\0g\0\n", 4}, "f g \n"},
  };
  LineChunker appended;
  LineChunker filled;
  for (auto const& row : rows) {
    appended.append(row.added);
    fill(filled, row.added);
    EXPECT_EQ(terminated(appended.takeLines()), row.lines);
    EXPECT_EQ(terminated(filled.takeLines()), row.lines);
  }
  EXPECT_EQ(terminated(filled.takeRest()), "");
}

// A read that ends before a line feed, which the next one begins with.
TEST(LineChunkerTest, takesALineFeedThatComesAlone) {
  LineChunker chunker;
  fill(chunker, "a\nb");
  fill(chunker, "\n");
  EXPECT_EQ(terminated(chunker.takeLines()), "a\nb\n");
  EXPECT_EQ(terminated(chunker.takeRest()), "");
}

TEST(LineChunkerTest, endsTheLastLine) {
  LineChunker chunker;
  chunker.append("a\nb");
  EXPECT_EQ(terminated(chunker.takeRest()), "a\nb\n");
  EXPECT_EQ(terminated(chunker.takeRest()), "");
}

TEST(LineChunkerTest, aLongLineMakesALongerChunk) {
  std::string const block(LineChunker::kChunkSize, 'x');
  LineChunker chunker;
  for (int i = 0; i < 3; ++i) {
    fill(chunker, block);
    EXPECT_FALSE(chunker.full());
    EXPECT_EQ(chunker.takeLines(), "");
  }
  fill(chunker, "\nrest");
  EXPECT_TRUE(chunker.full());
  EXPECT_EQ(terminated(chunker.takeLines()), block + block + block + '\n');
  EXPECT_FALSE(chunker.full());
  EXPECT_EQ(terminated(chunker.takeRest()), "rest\n");
}

TEST(LineChunkerTest, aFailedReadAddsNothing) {
  LineChunker chunker;
  chunker.append("a");
  EXPECT_THROW(chunker.fill([](char* place, std::size_t) -> std::size_t {
    *place = 'x';
    throw std::runtime_error("unreadable");
  }),
               std::runtime_error);
  EXPECT_EQ(terminated(chunker.takeRest()), "a\n");
}

}  // namespace
}  // namespace QorCliEngine
