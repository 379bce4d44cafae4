#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "LineFilter.h"
#include "PatternError.h"

namespace {

using QorCliMatching::LineFilter;
using QorCliMatching::LineSink;
using QorCliMatching::PatternError;
using Texts = std::vector<std::string>;

constexpr LineFilter::Settings kNoSkipping{false, 1.0};
constexpr LineFilter::Settings kNoTime{true, 0.0};

// Matched with the timed strategy, which checks the clock before each item.
constexpr char kTimed[] = "(a)b\\1";

// Records pushed lines as "+line" (selected) and "-line".
class RecordingSink : public LineSink {
 public:
  void selected(std::string_view lines) override { record('+', lines); }
  void unselected(std::string_view lines) override { record('-', lines); }

  Texts const& lines() const { return lines_; }
  int calls() const { return calls_; }

 private:
  void record(char sign, std::string_view lines) {
    ++calls_;
    ASSERT_FALSE(lines.empty());
    ASSERT_EQ('\n', lines.back());
    while (!lines.empty()) {
      std::size_t const feed = lines.find('\n');
      lines_.push_back(sign + std::string(lines.substr(0, feed)));
      lines.remove_prefix(feed + 1);
    }
  }

  Texts lines_;
  int calls_ = 0;
};

Texts pushed(std::string const& pattern, std::string const& text,
             bool invert = false, LineFilter::Settings const& settings = {}) {
  LineFilter filter(pattern, false, settings);
  RecordingSink sink;
  filter.filter(text, invert, sink);
  return sink.lines();
}

std::string repeated(std::string const& text, std::size_t count) {
  std::string result;
  while (count-- != 0) result += text;
  return result;
}

TEST(LineFilterTest, PushesAllLinesInOrder) {
  for (char const* pattern : {"b", "[b]", "b+|b\\d+", "(b)+", "b(?=)"}) {
    EXPECT_EQ((Texts{"-a", "+b1", "+b2", "-", "-c", "+ab", "-d"}),
              pushed(pattern, "a\nb1\nb2\n\nc\nab\nd\n"))
        << pattern;
  }
}

TEST(LineFilterTest, PushesInvertedSelection) {
  for (char const* pattern : {"b", "[b]", "b+|b\\d+", "(b)+", "b(?=)"}) {
    EXPECT_EQ((Texts{"+a", "-b1", "-b2", "+", "+c", "-ab", "+d"}),
              pushed(pattern, "a\nb1\nb2\n\nc\nab\nd\n", true))
        << pattern;
  }
}

TEST(LineFilterTest, IgnoresCaseOfEitherSide) {
  for (auto const& [pattern, text] :
       {std::pair("zoo", "ZOO\n"), std::pair("ZOO", "zoo\n"),
        std::pair("zOo", "ZoO\n")}) {
    LineFilter filter(pattern, true);
    RecordingSink sink;
    filter.filter(text, false, sink);
    EXPECT_EQ(sink.lines().front().front(), '+') << pattern;
  }
}

TEST(LineFilterTest, LooksAtAllOfALongPlainPattern) {
  for (std::size_t const size : {63U, 64U, 65U, 66U, 130U}) {
    std::string const begin(size - 1, 'a');
    EXPECT_EQ((Texts{"-" + begin + "c", "+" + begin + "b", "-" + begin}),
              pushed(begin + 'b', begin + "c\n" + begin + "b\n" + begin + '\n'))
        << size;
  }
}

TEST(LineFilterTest, PushesUnmatchedLinesTogether) {
  LineFilter filter("b", false);
  RecordingSink sink;
  filter.filter("a\na\na\nb\nb\na\na\n", false, sink);
  EXPECT_EQ(4, sink.calls());
  EXPECT_EQ(7U, sink.lines().size());
}

TEST(LineFilterTest, IgnoresTextAfterTheLastLineFeed) {
  for (LineFilter::Settings const& settings :
       {LineFilter::Settings(), kNoSkipping}) {
    EXPECT_EQ((Texts{"-a"}), pushed("b", "a\nb", false, settings));
    EXPECT_EQ((Texts{"+b"}), pushed("b", "b\nb", false, settings));
    EXPECT_EQ(Texts{}, pushed("b", "b", false, settings));
    EXPECT_EQ(Texts{}, pushed("b", "", true, settings));
  }
}

TEST(LineFilterTest, FindsNoMatchAcrossLines) {
  for (char const* pattern : {"a\\sb", "a\\nb", "a\nb", "a\\\nb", "\\\n"}) {
    EXPECT_EQ((Texts{"-a", "-b"}), pushed(pattern, "a\nb\n")) << pattern;
  }
  EXPECT_EQ((Texts{"-a", "+a b", "-"}), pushed("a[^x]", "a\na b\n\n"));
  EXPECT_EQ((Texts{"-a", "-b", "-a"}), pushed("\\n", "a\nb\na\n"));
  EXPECT_EQ((Texts{"+xa", "+ay"}), pushed("\\Ba|a\\B", "xa\nay\n"));
  EXPECT_EQ((Texts{"-xa", "+ay"}), pushed("\\ba", "xa\nay\n"));
}

TEST(LineFilterTest, PreservesAllBytes) {
  std::string const text = std::string("a\0b\r\n", 5) + "\xFF\xC3\n";
  EXPECT_EQ((Texts{"+" + std::string("a\0b\r", 4), "-\xFF\xC3"}),
            pushed("b", text));
}

TEST(LineFilterTest, FiltersSeveralTexts) {
  LineFilter filter("ab", false);
  for (int i = 0; i < 3; ++i) {
    RecordingSink sink;
    filter.filter("ab\nx\n", i % 2 == 1, sink);
    EXPECT_EQ(i % 2 == 1 ? (Texts{"-ab", "+x"}) : (Texts{"+ab", "-x"}),
              sink.lines());
  }
}

TEST(LineFilterTest, KnowsItsPatternAndOption) {
  LineFilter const filter("ab", true);
  EXPECT_TRUE(filter.isFor("ab", true));
  EXPECT_FALSE(filter.isFor("ab", false));
  EXPECT_FALSE(filter.isFor("aB", true));
}

// ---- Failures

TEST(LineFilterTest, RejectsAMalformedPatternWithReasonAndOffset) {
  try {
    LineFilter const filter("a(b", false);
    FAIL();
  } catch (PatternError const& error) {
    EXPECT_STREQ("missing closing parenthesis at offset 3", error.what());
  }
}

TEST(LineFilterTest, FailsOnTimeout) {
  for (char const* pattern : {kTimed, "ab(?=a)", "(*UTF)ab"}) {
    LineFilter filter(pattern, false, kNoTime);
    RecordingSink sink;
    EXPECT_THROW(filter.filter("aba\n", false, sink), PatternError) << pattern;
    EXPECT_EQ(Texts{}, sink.lines());
  }
}

TEST(LineFilterTest, PushesTheLinesBeforeTheOneThatFails) {
  for (bool const invert : {false, true}) {
    LineFilter filter("(*UTF)b", false);
    RecordingSink sink;
    EXPECT_THROW(filter.filter("a\nb\nc\nd\nb\xFF\nb\n", invert, sink),
                 PatternError);
    EXPECT_EQ(invert ? (Texts{"+a", "-b", "+c", "+d"})
                     : (Texts{"-a", "+b", "-c", "-d"}),
              sink.lines());
  }
}

TEST(LineFilterTest, NeedsNoBudgetForRegularPatterns) {
  EXPECT_EQ((Texts{"+ab", "-c"}), pushed("ab", "ab\nc\n", false, kNoTime));
  EXPECT_EQ((Texts{"+ab", "-c"}), pushed("(a|b)+", "ab\nc\n", false, kNoTime));
}

class ThrowingSink : public LineSink {
 public:
  void selected(std::string_view) override {
    throw std::runtime_error("the sink is full");
  }
  void unselected(std::string_view) override {}
};

TEST(LineFilterTest, PropagatesExceptionsOfTheSink) {
  LineFilter filter("b", false);
  ThrowingSink sink;
  EXPECT_THROW(filter.filter("a\nb\n", false, sink), std::runtime_error);
}

// ---- Skipping

// Dense, then sparse, and the reverse: the prefilter never changes the result.
TEST(LineFilterTest, FindsTheSameWhenThePrefilterIsTurnedOff) {
  std::string const dense = repeated("has text 1\nhas text x\n", 300);
  std::string const sparse = repeated("has none\n", 600);
  std::string const one = "text 2\n";
  for (std::string const& text :
       {dense + sparse, sparse + dense, dense + one + sparse + one + dense,
        repeated(one + repeated("a line without it\n", 3), 200)}) {
    for (char const* pattern : {"text \\d", "text", "(t)ext \\d|\\1none"}) {
      for (bool const invert : {false, true}) {
        EXPECT_EQ(pushed(pattern, text, invert, kNoSkipping),
                  pushed(pattern, text, invert))
            << pattern;
      }
    }
  }
}

// Matching any line would exceed the budget.
TEST(LineFilterTest, SkipsLinesWithoutARequiredText) {
  std::string const pattern = kTimed + std::string("cd");
  EXPECT_EQ((Texts{"-abaddd", "-x"}),
            pushed(pattern, "abaddd\nx\n", false, kNoTime));
  EXPECT_THROW(pushed(pattern, "x\nabacd\n", false, kNoTime), PatternError);
  EXPECT_THROW(pushed(pattern, "abaddd\n", false, {false, 0.0}), PatternError);
}

TEST(LineFilterTest, TurnsThePrefilterOnAgainInTheNextCall) {
  LineFilter filter("text \\d", false);
  for (int i = 0; i < 2; ++i) {
    RecordingSink dense;
    filter.filter(repeated("has text 1\n", 200), false, dense);
    EXPECT_EQ(Texts(200, "+has text 1"), dense.lines());
    RecordingSink sparse;
    filter.filter(repeated("has none\n", 200), false, sparse);
    EXPECT_EQ(1, sparse.calls());
    EXPECT_EQ(Texts(200, "-has none"), sparse.lines());
  }
}

}  // namespace
