#include <gtest/gtest.h>

#include "CommandLine.h"

namespace QorCliEngine {
namespace {

using Texts = std::vector<std::string>;

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

}  // namespace
}  // namespace QorCliEngine
