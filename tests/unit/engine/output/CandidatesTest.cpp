#include <gtest/gtest.h>

#include "output/Candidates.h"

namespace QorCliEngine {
namespace {

Candidate offered(std::string const& text, std::string const& help = "",
                  QorCliCompletionToken_1T token = QOR_CLI_TOKEN_WORD) {
  return {token, text, help, {QOR_CLI_SORT_COMMAND, text}};
}

TEST(CandidatesTest, mergedSortsAndShowsOnce) {
  struct {
    std::vector<Candidate> candidates;
    std::string rows;
  } const rows[] = {
      {{}, ""},
      {{offered(""), offered("", "help")}, ""},
      {{offered(""), offered("a")}, "3\ta\t\t6\ta\n"},
      {{offered("b"), offered("a")}, "3\ta\t\t6\ta\n3\tb\t\t6\tb\n"},
      {{offered("a"), offered("a", "help")}, "3\ta\thelp\t6\ta\n"},
      {{offered("a", "1"), offered("a", "2")},
       "3\ta\t1\t6\ta\n3\ta\t2\t6\ta\n"},
      {{offered("<cr>"), offered("z")}, "3\tz\t\t6\tz\n3\t<cr>\t\t6\t<cr>\n"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(Candidates::rows(Candidates::merged(row.candidates)), row.rows);
  }
}

TEST(CandidatesTest, rowsEscape) {
  EXPECT_EQ(Candidates::rows({offered("a\\", "b\nc\td")}),
            "3\ta\\\\\tb\\nc\\td\t6\ta\\\\\n");
}

TEST(CandidatesTest, offerReturn) {
  EXPECT_FALSE(Candidates::offerReturn({}));
  EXPECT_FALSE(Candidates::offerReturn({offered("cr")}));
  EXPECT_TRUE(Candidates::offerReturn({offered("a"), offered("<cr>")}));
}

TEST(CandidatesTest, complete) {
  Candidate const option = offered("-i", "", QOR_CLI_TOKEN_OPTION);
  struct {
    std::string word;
    std::vector<Candidate> candidates;
    std::string completed;
    bool show;
  } const rows[] = {
      {"fi", {offered("filter")}, "filter ", false},
      {"FI", {offered("filter")}, "filter ", false},
      {"fi", {offered("file"), offered("filter")}, "fil", true},
      {"fil", {offered("file"), offered("filter")}, "fil", true},
      {"", {offered("<text>"), offered("-i")}, "", true},
      {"", {offered("<cr>"), offered("-i")}, "-i ", false},
      {"d", {offered("dir/")}, "dir/", false},
      {"d", {offered("\"dir two/")}, "\"dir two/", false},
      {"x", {offered("<text>")}, "x", true},
      {"word", {option}, "word -i ", false},
      {"x", {offered("x\xC3\xA4"), offered("x\xC3\xB6")}, "x", true},
      {"", {offered("\xC3\xA4y"), offered("\xC3\xA4z")}, "\xC3\xA4", true},
      {"", {offered("\"")}, "\"", false},
  };
  for (auto const& row : rows) {
    auto const completion = Candidates::complete(row.word, row.candidates);
    EXPECT_EQ(completion.word, row.completed) << row.word;
    EXPECT_EQ(completion.show, row.show) << row.word;
  }
}

TEST(CandidatesTest, lists) {
  std::vector<Candidate> const candidates = {
      offered("a", "first"), offered("<n>", "number"), offered("<cr>")};
  auto const doubled = [](std::string const& text) { return text + text; };
  EXPECT_EQ(Candidates::list(candidates, doubled, 40),
            "aa\n<n>   number\n<cr>  Run the line as it stands\n");
  EXPECT_EQ(Candidates::helpList(candidates, 40),
            "a     first\n<n>   number\n<cr>  Run the line as it stands\n");
}

}  // namespace
}  // namespace QorCliEngine
