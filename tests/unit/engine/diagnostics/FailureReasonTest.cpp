#include <gtest/gtest.h>

#include "diagnostics/FailureReason.h"

namespace QorCliEngine {
namespace {

std::string error(std::string const& text) {
  return "severity 4 cli File.cpp:5 run: " + text + '\n';
}

constexpr char kWarning[] = "severity 5 cli File.cpp:6 run: Not so bad.\n";
constexpr char kTrace[] = "level 8 cli File.cpp:7 run: on the way\n";

TEST(FailureReasonTest, isTheLastErrorWhichIsTakenOut) {
  struct {
    std::string records;
    std::string sentence;
    std::string others;
  } const rows[] = {
      {error("No memory."), "No memory", ""},
      {error("No full stop"), "No full stop", ""},
      {kTrace + error("First.") + kWarning + error("Last.") + kTrace, "Last",
       kTrace + error("First.") + kWarning + kTrace},
      {"severity 0 cli File.cpp:5 run: Graver.\n", "Graver", ""},
      {"no record\n" + error("x"), "x", "no record\n"},
  };
  for (auto const& row : rows) {
    std::string records = row.records;
    auto const reason = FailureReason::takeFrom(records);
    ASSERT_TRUE(reason) << row.records;
    EXPECT_EQ(reason->sentence, row.sentence);
    EXPECT_EQ(records, row.others);
  }
}

TEST(FailureReasonTest, isNotThereWithoutAnError) {
  for (std::string const& text :
       {std::string(), std::string(kWarning), std::string(kTrace),
        std::string("severity four\n")}) {
    std::string records = text;
    EXPECT_FALSE(FailureReason::takeFrom(records));
    EXPECT_EQ(records, text);
  }
}

std::string repeated(std::size_t times, std::string const& text) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

TEST(FailureReasonTest, placeIsWhatIsQuotedAndTheOffset) {
  constexpr std::size_t kMegabyte = 1 << 20;
  std::string const offsets = repeated(50000, "\": at offset");
  struct {
    std::string text;
    std::string quoted;
    std::size_t offset;
  } const rows[] = {
      {"Filter pattern \"a(b\": missing parenthesis at offset 3.", "a(b", 3},
      {"Pattern \"a\": \"(\": odd at offset 0", "a\": \"(", 0},
      {"Pattern \"\": none at offset 12.", "", 12},
      {"Pattern \"" + std::string(kMegabyte, 'a') + "\": odd at offset 7.",
       std::string(kMegabyte, 'a'), 7},
      {"Pattern \"" + offsets + "\": odd at offset 8.", offsets, 8},
  };
  for (auto const& row : rows) {
    std::string records = error(row.text);
    auto const place = FailureReason::takeFrom(records)->place;
    ASSERT_TRUE(place) << row.text;
    EXPECT_EQ(place->text, row.quoted);
    EXPECT_EQ(place->offset, row.offset);
  }
}

TEST(FailureReasonTest, escapesStandForBytes) {
  struct {
    char const* text;
    std::string bytes;
  } const rows[] = {
      {"", ""},
      {"a(b", "a(b"},
      {"\\xC3\\xA4", "\xC3\xA4"},
      {"a\\x41b", "aAb"},
      {"\\xc3 \\x4 \\x", "\\xc3 \\x4 \\x"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ((FailureReason::Place{row.text, 0}.inBytes()), row.bytes);
  }
}

TEST(FailureReasonTest, placeNeedsBoth) {
  for (char const* text :
       {"Filter pattern \"a\": matching takes too long.",
        "missing parenthesis at offset 3.", "Pattern \"a\": at offset x.",
        "Pattern \"a\": at offset 3.", "Pattern \": odd at offset 3.",
        "Pattern a: odd at offset 3.", "Pattern \"a\": odd at offset .",
        " at offset 3.",
        "Pattern \"a\": odd at offset 12345678901234567890."}) {
    std::string records = error(text);
    EXPECT_FALSE(FailureReason::takeFrom(records)->place) << text;
  }
}

}  // namespace
}  // namespace QorCliEngine
