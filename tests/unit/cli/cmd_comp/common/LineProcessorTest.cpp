#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "LineProcessor.h"

namespace QorCliUtilities {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Prints each line in brackets, and their number at the end.
class Bracketing : public LineProcessor {
 public:
  void line(std::string_view text, Printer& printer) override {
    printer.line('[' + std::string(text) + ']');
    ++count_;
  }
  void end(Printer& printer) override { printer.line(std::to_string(count_)); }

 private:
  unsigned count_ = 0;
};

// Records its input.
struct Recording : TextProcessor {
  void text(std::string_view lines, Printer&) override {
    chunks.emplace_back(lines);
  }
  std::vector<std::string> chunks;
};

std::vector<std::string> cut(std::vector<std::string> const& chunks,
                             bool finish) {
  std::vector<std::string> printed;
  Printer printer(printed);
  Recording recording;
  LineCutter cutter;
  for (auto const& chunk : chunks) cutter.add(chunk, recording, printer);
  if (finish) cutter.finish(recording, printer);
  EXPECT_THAT(printed, IsEmpty());
  return recording.chunks;
}

TEST(LineCutter, BuffersTextAfterTheLastLineFeed) {
  EXPECT_THAT(cut({}, true), IsEmpty());
  EXPECT_THAT(cut({"", ""}, true), IsEmpty());
  EXPECT_THAT(cut({"a\nb\n"}, true), ElementsAre("a\nb\n"));
  EXPECT_THAT(cut({"a\nb"}, false), ElementsAre("a\n"));
  EXPECT_THAT(cut({"a\nb"}, true), ElementsAre("a\n", "b\n"));
  EXPECT_THAT(cut({"a", "", "b\nc\nd\n", "\n"}, true),
              ElementsAre("ab\n", "c\nd\n", "\n"));
  EXPECT_THAT(cut({"a", "\n", "\n"}, true), ElementsAre("a\n", "\n"));
}

// All texts of "a" and line feeds up to eight bytes, split in every way.
TEST(LineCutter, ChunksMakeNoDifference) {
  for (unsigned length = 0; length <= 8; ++length) {
    for (unsigned text = 0; text < 1U << length; ++text) {
      std::string whole;
      for (unsigned i = 0; i < length; ++i) {
        whole += (text >> i & 1U) != 0 ? '\n' : 'a';
      }
      std::string expected;
      std::string rest = whole;
      if (!rest.empty() && rest.back() != '\n') rest += '\n';
      unsigned lines = 0;
      for (; !rest.empty(); rest.erase(0, rest.find('\n') + 1), ++lines) {
        expected += '[' + rest.substr(0, rest.find('\n')) + "]\n";
      }
      expected += std::to_string(lines) + '\n';
      for (unsigned cuts = 0; cuts < 1U << length; ++cuts) {
        std::vector<std::string> printed;
        Printer printer(printed);
        Bracketing bracketing;
        LineCutter cutter;
        std::size_t begin = 0;
        for (unsigned i = 0; i < length; ++i) {
          if ((cuts >> i & 1U) == 0) continue;
          cutter.add(whole.substr(begin, i - begin), bracketing, printer);
          begin = i;
        }
        cutter.add(whole.substr(begin), bracketing, printer);
        cutter.finish(bracketing, printer);
        ASSERT_THAT(printed, ElementsAre(expected))
            << testing::PrintToString(whole);
      }
    }
  }
}

TEST(Printer, AddsALineFeed) {
  std::vector<std::string> printed;
  Printer printer(printed);
  printer.line("a");
  printer.line("");
  printer.line("b\nc");
  printer.line("1 ", "d");
  printer.line("", "");
  EXPECT_THAT(printed, ElementsAre("a\n\nb\nc\n1 d\n\n"));
}

TEST(Printer, PrintsABlankForANul) {
  using namespace std::string_view_literals;
  std::vector<std::string> printed;
  Printer printer(printed);
  printer.line("\0a\0\0b\0"sv);
  printer.line("\0"sv, "1\0"sv);
  printer.lines("c\0\n"sv);
  EXPECT_THAT(printed, ElementsAre(" a  b \n 1 \nc \n"));
}

TEST(Printer, PrintsWholeLinesUnchanged) {
  std::vector<std::string> printed;
  Printer printer(printed);
  printer.lines("a\n\nb\n");
  printer.lines("");
  printer.lines("c\n");
  EXPECT_THAT(printed, ElementsAre("a\n\nb\nc\n"));
}

std::size_t memoryOf(std::vector<std::string> const& texts) {
  std::size_t bytes = 0;
  for (std::string const& text : texts) bytes += text.capacity();
  return bytes;
}

// Neither the line feed of a long line nor output before and after it doubles
// the memory.
TEST(Printer, TakesNoMoreMemoryThanALongLine) {
  std::vector<std::string> printed;
  std::string const line(1U << 20U, 'x');
  Printer printer(printed);
  printer.line("before");
  printer.line("1 ", line);
  char const* const place = printed.back().data();
  printer.line("behind");
  EXPECT_EQ(printed[1].data(), place);
  EXPECT_THAT(printed, ElementsAre("before\n", "1 " + line + '\n', "behind\n"));
  EXPECT_LT(memoryOf(printed), line.size() + 200);
}

// The engine is called for each text, so there must not be many.
TEST(Printer, JoinsShortLines) {
  std::vector<std::string> printed;
  Printer printer(printed);
  for (unsigned i = 0; i < 1U << 16U; ++i) printer.line("1234567");
  EXPECT_EQ(printed.size(), 8U);
}

TEST(LineProcessor, ReceivesEachLineWithoutItsLineFeed) {
  std::vector<std::string> printed;
  Printer printer(printed);
  Bracketing bracketing;
  bracketing.text("a\n\nb", printer);
  EXPECT_THAT(printed, ElementsAre("[a]\n[]\n[b]\n"));
}

}  // namespace
}  // namespace QorCliUtilities
