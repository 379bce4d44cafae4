#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "completion/CommandTree.h"

namespace QorCliEngine {
namespace {

Candidate offered(std::string const& text, std::string const& help = "") {
  return {QOR_CLI_TOKEN_NEXT_WORD, text, help, {QOR_CLI_SORT_COMMAND, text}};
}

// A tree in one line: "word(next next)", "^word" for one drawn further up, and
// "!" where something is left out.
std::string summary(TreeWord const& word) {
  std::string inside;
  for (TreeWord const& next : word.next) inside += ' ' + summary(next);
  for (TreeWord const& again : word.again) inside += " ^" + again.text;
  if (!word.leftOut.empty()) inside += " !";
  return inside.empty() ? word.text : word.text + '(' + inside.substr(1) + ')';
}

std::string explored(CommandTreeExplorer::Ask const& ask) {
  return summary(CommandTreeExplorer().explore("root", "", ask));
}

// The depth of a tree in which each word has one that follows.
std::size_t depthOf(TreeWord const& word) {
  return word.next.empty() ? 0 : 1 + depthOf(word.next.front());
}

// The same answers to both requests, by line.
class Answers {
 public:
  explicit Answers(std::map<std::string, std::vector<Candidate>> byLine)
      : byLine_(std::move(byLine)) {}

  std::vector<Candidate> operator()(QorCliActionEnum_2T,
                                    std::string const& line) const {
    auto const found = byLine_.find(line);
    return found == byLine_.end() ? std::vector<Candidate>() : found->second;
  }

 private:
  std::map<std::string, std::vector<Candidate>> byLine_;
};

TEST(CommandTreeTest, wordsAreFollowed) {
  EXPECT_EQ(explored(Answers({})), "root");
  EXPECT_EQ(explored(Answers({{"", {offered("b"), offered("a")}},
                              {"a ", {offered("x"), offered("<cr>")}},
                              {"a x ", {offered("<cr>")}}})),
            "root(a(x(<cr>) <cr>) b)");
}

TEST(CommandTreeTest, aPlaceholderIsAnsweredWithANumber) {
  EXPECT_EQ(explored(Answers({{"", {offered("a")}},
                              {"a ", {offered("<value>")}},
                              {"a 1 ", {offered("<cr>")}},
                              {"a <value> ", {offered("wrong")}}})),
            "root(a(<value>(<cr>)))");
}

TEST(CommandTreeTest, bothRequestsMustOfferAWord) {
  using Words = std::vector<Candidate>;
  struct {
    Words completing;
    Words helping;
    std::string tree;
  } const rows[] = {
      {{offered("a"), offered("b")}, {offered("b"), offered("c")}, "root(b)"},
      {{offered("a")}, {}, "root(a)"},
      {{}, {offered("a")}, "root(a)"},
      {{offered("<cr>")}, {offered("a")}, "root(<cr>)"},
      {{offered("a")}, {offered("a"), offered("<cr>")}, "root(a <cr>)"},
      {{offered("a")}, {offered("b")}, "root"},
      {{offered("")}, {offered("")}, "root"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(
        explored([&](QorCliActionEnum_2T action, std::string const& line) {
          if (!line.empty()) return Words();
          return action == QOR_CLI_ACTION_COMPLETE ? row.completing
                                                   : row.helping;
        }),
        row.tree);
  }
}

TEST(CommandTreeTest, optionsThatComeAgainAreFollowedOnce) {
  std::vector<Candidate> const options{offered("-i"), offered("-v"),
                                       offered("<text>")};
  EXPECT_EQ(explored([&](QorCliActionEnum_2T, std::string const& line) {
              return line.empty() ? std::vector<Candidate>{offered("filter")}
                                  : options;
            }),
            "root(filter(-i(^-i ^-v ^<text>) -v(^-i ^-v ^<text>) "
            "<text>(^-i ^-v ^<text>)))");
}

TEST(CommandTreeTest, aWordThatComesAgainNamesTheOneAbove) {
  TreeWord const root =
      CommandTreeExplorer().explore("root", "",
                                    Answers({{"", {offered("a")}},
                                             {"a ", {offered("x")}},
                                             {"a x ", {offered("x")}}}));
  TreeWord const& x = root.next.at(0).next.at(0);
  ASSERT_EQ(x.again.size(), 1U);
  EXPECT_EQ(x.again[0].number, x.number);
}

TEST(CommandTreeTest, wordsThatOnlyLookAlikeAreFollowed) {
  // The name of a command as the argument of another one.
  EXPECT_EQ(explored(Answers({{"", {offered("port"), offered("show")}},
                              {"show ", {offered("port")}},
                              {"show port ", {offered("<cr>")}}})),
            "root(port show(port(<cr>)))");
  // The same word with another meaning.
  EXPECT_EQ(explored(Answers({{"", {offered("set")}},
                              {"set ", {offered("port", "One"), offered("x")}},
                              {"set x ", {offered("port", "Two")}},
                              {"set x port ", {offered("<cr>")}}})),
            "root(set(port x(port(<cr>))))");
}

TEST(CommandTreeTest, helpIsOneLineWithoutTheMarkOfAKeyword) {
  struct {
    std::string help;
    std::string shown;
  } const rows[] = {
      {"() Print a text\nType: Command", "Print a text"},
      {"Plain", "Plain"},
      {"()", "()"},
      {"", ""},
  };
  for (auto const& row : rows) {
    TreeWord const root = CommandTreeExplorer().explore(
        "root", "", Answers({{"", {offered("a", row.help)}}}));
    EXPECT_EQ(root.next.at(0).help, row.shown);
  }
}

TEST(CommandTreeTest, failuresAreSaid) {
  TreeWord const root = CommandTreeExplorer().explore(
      "root", "", [](QorCliActionEnum_2T, std::string const& line) {
        if (line == "a ") throw std::runtime_error("not today");
        return line.empty() ? std::vector<Candidate>{offered("a"), offered("b")}
                            : std::vector<Candidate>();
      });
  EXPECT_EQ(summary(root), "root(a(!) b)");
  EXPECT_EQ(root.next.at(0).leftOut, "not today");
}

TEST(CommandTreeTest, depthIsLimited) {
  TreeWord const root = CommandTreeExplorer().explore(
      "root", "", [](QorCliActionEnum_2T, std::string const& line) {
        return std::vector<Candidate>{
            offered('w' + std::to_string(line.size()))};
      });
  EXPECT_EQ(depthOf(root), CommandTreeExplorer::kMaxDepth);
}

TEST(CommandTreeTest, widthIsLimited) {
  std::size_t const count = CommandTreeExplorer::kMaxNext + 3;
  TreeWord const root = CommandTreeExplorer().explore(
      "root", "", [&](QorCliActionEnum_2T, std::string const& line) {
        std::vector<Candidate> words;
        for (std::size_t i = 0; line.empty() && i < count; ++i) {
          words.push_back(offered(std::to_string(i)));
        }
        return words;
      });
  EXPECT_EQ(root.next.size(), CommandTreeExplorer::kMaxNext);
  EXPECT_EQ(root.leftOut, "and 3 more");
}

TEST(CommandTreeTest, questionsAreLimited) {
  std::size_t questions = 0;
  CommandTreeExplorer explorer;
  for (int tree = 0; tree < 2; ++tree) {
    explorer.explore("root", "",
                     [&](QorCliActionEnum_2T, std::string const& line) {
                       ++questions;
                       std::vector<Candidate> words;
                       for (char c = 'a'; c <= 'j'; ++c) {
                         words.push_back(offered(line + c));
                       }
                       return words;
                     });
  }
  EXPECT_LE(questions, 2 * CommandTreeExplorer::kMaxWords);
  EXPECT_GT(questions, CommandTreeExplorer::kMaxWords / 10);
}

}  // namespace
}  // namespace QorCliEngine
