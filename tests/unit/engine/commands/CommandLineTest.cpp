#include <gtest/gtest.h>

#include "commands/CommandLine.h"

namespace QorCliEngine {
namespace {

using Texts = std::vector<std::string>;

TEST(CommandLineTest, isSilent) {
  for (char const* line : {"", " \t ", "#", "# a | b", " ! \"", "!a"}) {
    EXPECT_TRUE(CommandLine::isSilent(line)) << line;
  }
  for (char const* line : {"a", " a # b", "|", "\"#\""}) {
    EXPECT_FALSE(CommandLine::isSilent(line)) << line;
  }
}

TEST(CommandLineTest, stages) {
  struct {
    std::string line;
    Texts stages;
  } const rows[] = {
      {"", {""}},
      {" \t ", {""}},
      {"a", {"a"}},
      {" a b | c ", {"a b", "c"}},
      {"a|b|c", {"a", "b", "c"}},
      {"a||b", {"a", "", "b"}},
      {"|", {"", ""}},
      {R"(a "x|y" | b)", {R"(a "x|y")", "b"}},
      {R"("x\"|y" | b)", {R"("x\"|y")", "b"}},
      {R"("open | b)", {R"("open | b)"}},
      {R"(x\"y|z" | b)", {R"(x\"y|z")", "b"}},
      {R"("x\\" | b)", {R"("x\\")", "b"}},
      {R"("a\\" "b|c")", {R"("a\\" "b)", R"(c")"}},
      {R"("x\\|y" | "b")", {R"("x\\|y")", R"("b")"}},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(CommandLine::stages(row.line), row.stages) << row.line;
  }
}

TEST(CommandLineTest, openQuote) {
  constexpr auto kNone = std::string::npos;
  struct {
    std::string line;
    std::size_t quote;
  } const rows[] = {
      {"", kNone},           {"a | b", kNone},     {R"("")", kNone},
      {R"(a "x|y")", kNone}, {R"(")", 0},          {R"(a "x|y | b)", 2},
      {R"("x" a "y)", 6},    {R"("x\" | "b")", 9}, {R"("x\"y)", kNone},
      {R"("a\" "b|c")", 9},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(CommandLine::openQuote(row.line), row.quote) << row.line;
  }
}

TEST(CommandLineTest, stageEnd) {
  std::string const line = R"( a b |"x|y"  || c )";
  std::size_t const ends[] = {4, 11, 14, 17};
  for (std::size_t i = 0; i < std::size(ends); ++i) {
    EXPECT_EQ(CommandLine::stageEnd(line, i + 1), ends[i]) << i;
  }
  EXPECT_EQ(CommandLine::stageEnd("", 1), 0U);
}

TEST(CommandLineTest, firstWord) {
  EXPECT_EQ(CommandLine::firstWord(""), "");
  EXPECT_EQ(CommandLine::firstWord("show"), "show");
  EXPECT_EQ(CommandLine::firstWord("show\tfile"), "show");
}

TEST(CommandLineTest, typedEnd) {
  struct {
    std::string line;
    std::size_t stageNumber, stageBegin, wordBegin;
    bool insideQuotes;
  } const rows[] = {
      {"", 0, 0, 0, false},
      {"  sh", 0, 2, 2, false},
      {"show f", 0, 0, 5, false},
      {"show ", 0, 0, 5, false},
      {"a | fi", 1, 4, 4, false},
      {"a|", 1, 2, 2, false},
      {R"(a "b | c)", 0, 0, 2, true},
      {R"(a "b | c")", 0, 0, 2, false},
      {R"(a "b" c)", 0, 0, 6, false},
      {R"(a "b\" c" d)", 0, 0, 10, false},
      {R"(a "b\\" | c)", 1, 10, 10, false},
  };
  for (auto const& row : rows) {
    CommandLine::TypedEnd const end = CommandLine::typedEnd(row.line);
    EXPECT_EQ(end.stageNumber, row.stageNumber) << row.line;
    EXPECT_EQ(end.stageBegin, row.stageBegin) << row.line;
    EXPECT_EQ(end.wordBegin, row.wordBegin) << row.line;
    EXPECT_EQ(end.insideQuotes, row.insideQuotes) << row.line;
  }
}

TEST(CommandLineTest, wordEnds) {
  struct {
    std::string line;
    std::vector<std::size_t> ends;
  } const rows[] = {
      {"", {}},
      {"  ", {}},
      {"a", {1}},
      {" ab  c ", {3, 6}},
      {"a | b c", {5, 7}},
      {"a|", {}},
      {"a|bc", {4}},
      {R"(a "b | c" d)", {1, 9, 11}},
      {R"(a "b c)", {1, 6}},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(CommandLine::wordEnds(row.line), row.ends) << row.line;
  }
}

TEST(CommandLineTest, lastWord) {
  struct {
    std::string line, word;
  } const rows[] = {
      {"", ""},
      {"a", "a"},
      {" a bc ", "bc"},
      {"a | b c", "c"},
      {"a |", ""},
      {R"(a "b | c")", R"("b | c")"},
      {R"(a "b c)", R"("b c)"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(CommandLine::lastWord(row.line), row.word) << row.line;
  }
}

TEST(CommandLineTest, unquoted) {
  struct {
    std::string word, text;
  } const rows[] = {
      {"", ""},
      {"a", "a"},
      {R"("a b")", "a b"},
      {R"("open)", "open"},
      {R"(")", ""},
      {R"("say \"a\"")", R"(say "a")"},
      {R"(a\"b)", R"(a\"b)"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(CommandLine::unquoted(row.word), row.text) << row.word;
  }
}

TEST(CommandLineTest, findInStage) {
  constexpr std::size_t kNone = std::string::npos;
  struct {
    std::string line;
    std::size_t stage;
    std::string text;
    std::size_t found;
  } const rows[] = {
      {"echo ( | filter (", 1, "(", 5},  {"echo ( | filter (", 2, "(", 16},
      {"f ( ( | (", 1, "(", 4},          {"f \"a (b\" | (", 1, "(b", 5},
      {"f \"a | (b\" | (", 1, "| (", 5}, {"a b | b", 1, "a b", kNone},
      {"ab | a", 2, "ab", kNone},        {"ab |", 2, "ab", kNone},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(CommandLine::findInStage(row.line, row.stage, row.text),
              row.found)
        << row.line;
  }
}

}  // namespace
}  // namespace QorCliEngine
