#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "completion/Abbreviations.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

using Last = Abbreviations::Last;

Candidate word(std::string const& text,
               QorCliCompletionToken_1T token = QOR_CLI_TOKEN_WORD) {
  return {token, text, "", {QOR_CLI_SORT_COMMAND, text}};
}

Candidate behind(std::string const& text) {
  return word(text, QOR_CLI_TOKEN_AFTER_LINE);
}

Candidate argument(std::string const& text) {
  return word(text, QOR_CLI_TOKEN_NEXT_WORD);
}

// `line` with one blank between its words.
std::string oneBlank(std::string const& line) {
  std::istringstream words(line);
  std::string result;
  for (std::string each; words >> each;) {
    result += (result.empty() ? "" : " ") + each;
  }
  return result;
}

// What is offered for each line that is asked for, and which those were.
struct Offers {
  std::map<std::string, std::vector<Candidate>> byLine{
      {"s", {word("show")}},
      {"S", {word("show")}},
      {"show", {behind("file"), behind("tree")}},
      {"show f", {word("file")}},
      {"show file", {behind("<path>")}},
      {"show file f", {word("fruits.txt"), argument("<path>")}},
      {"show t", {word("tree")}},
      {"show tree", {word("<cr>", QOR_CLI_TOKEN_OPTION), behind("--dot")}},
      {"show tree -", {word("--dot")}},
      {"e", {word("echo"), word("end"), word("echo"), word("exit")}},
      {"en", {word("end"), word("endless")}},
      {"end", {word("end"), word("endless")}},
      {"a", {word("--a"), word("<a>", QOR_CLI_TOKEN_OPTION), argument("ab")}},
      {"o", {word("only"), word("other")}},
      {"only", {word("onlyone"), behind("x")}},
      {"| f", {word("filter", QOR_CLI_TOKEN_PIPE_COMMAND)}},
      {"| filter", {word("-i", QOR_CLI_TOKEN_OPTION)}},
      {"| filter e", {argument("<pattern>"), word("<cr>")}},
  };
  std::vector<std::string> asked;

  Abbreviations::Expansion expand(std::string const& line, Last last) {
    return Abbreviations([this](std::string const& question) {
             asked.push_back(question);
             if (question == "broken") throw CommandFailure("no answer");
             return byLine[oneBlank(question)];
           })
        .expand(line, last);
  }
};

TEST(AbbreviationsTest, commandWordsAreExpanded) {
  struct {
    std::string line;
    Last last;
    std::string expanded;
  } const rows[] = {
      {"", Last::kFinished, ""},
      {"s", Last::kFinished, "show"},
      {"s", Last::kTyped, "s"},
      {"s ", Last::kTyped, "show "},
      {" s  f\tx ", Last::kFinished, " show  file\tx "},
      {"S f", Last::kFinished, "show file"},
      {"s f f", Last::kFinished, "show file f"},
      {"s t --d", Last::kFinished, "show tree --d"},
      {"s t -", Last::kFinished, "show tree -"},
      {"SHOW t", Last::kFinished, "SHOW t"},
      {"x s", Last::kFinished, "x s"},
      {"\"s\" f", Last::kFinished, "\"s\" f"},
      {"s \"f\" x", Last::kFinished, "show \"f\" x"},
      {"s f|f e", Last::kFinished, "s f|f e"},
      {"| f e", Last::kFinished, "| filter e"},
      {"end x", Last::kFinished, "end x"},
      {"only x", Last::kFinished, "only x"},
      {"a", Last::kFinished, "a"},
      {"broken s", Last::kFinished, "broken s"},
  };
  for (auto const& row : rows) {
    Offers offers;
    auto const expansion = offers.expand(row.line, row.last);
    EXPECT_EQ(expansion.line, row.expanded) << row.line;
    EXPECT_FALSE(expansion.ambiguity) << row.line;
  }
}

TEST(AbbreviationsTest, ambiguousWordsAreNamed) {
  struct {
    std::string line;
    std::string expanded;
    std::size_t begin;
    std::string sentence;
  } const rows[] = {
      {"e x", "e x", 0, "\"e\" is ambiguous: echo, end, exit"},
      {" en", " en", 1, "\"en\" is ambiguous: end, endless"},
      {"o x", "o x", 0, "\"o\" is ambiguous: only, other"},
  };
  for (auto const& row : rows) {
    Offers offers;
    auto const expansion = offers.expand(row.line, Last::kFinished);
    EXPECT_EQ(expansion.line, row.expanded);
    ASSERT_TRUE(expansion.ambiguity) << row.line;
    EXPECT_EQ(expansion.ambiguity->begin, row.begin);
    EXPECT_EQ(expansion.ambiguity->sentence(), row.sentence);
  }
}

TEST(AbbreviationsTest, theBeginIsThatOfTheLineAsTyped) {
  Offers offers;
  offers.byLine["show e"] = offers.byLine["e"];
  auto const expansion = offers.expand("s e", Last::kFinished);
  EXPECT_EQ(expansion.line, "show e");
  ASSERT_TRUE(expansion.ambiguity);
  EXPECT_EQ(expansion.ambiguity->begin, 2U);
}

TEST(AbbreviationsTest, asksOnceForEachCommandWordAndOnceBehindThem) {
  using Lines = std::vector<std::string>;
  struct {
    std::string line;
    Lines asked;
  } const rows[] = {
      {"s f f x y z", {"s", "show f", "show file f"}},
      {"s t --dot x", {"s", "show t"}},
      {"x y z", {"x"}},
      {"\"s\" f", {}},
  };
  for (auto const& row : rows) {
    Offers offers;
    offers.expand(row.line, Last::kFinished);
    EXPECT_EQ(offers.asked, row.asked) << row.line;
  }
}

TEST(AbbreviationsTest, wordsAreLimited) {
  std::size_t asked = 0;
  std::string line;
  for (std::size_t i = 0; i < 2 * Abbreviations::kMostWords; ++i) line += "w ";
  Abbreviations([&](std::string const&) {
    ++asked;
    return std::vector<Candidate>{behind("w")};
  }).expand(line, Last::kFinished);
  EXPECT_EQ(asked, Abbreviations::kMostWords);
}

}  // namespace
}  // namespace QorCliEngine
