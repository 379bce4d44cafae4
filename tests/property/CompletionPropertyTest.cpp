#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>
#include <vector>

#include "PluginTest.h"
#include "Seed.h"

namespace qor_test {
namespace {

using testing::IsEmpty;

constexpr unsigned kActionId = 5;
constexpr char kBlanks[] = " \t\n\v\f\r";

bool isPlaceholder(std::string const& completion) {
  return completion.front() == '<' && completion.back() == '>';
}

bool hasPrefix(std::string const& text, std::string const& word) {
  return word.size() <= text.size() &&
         std::equal(word.begin(), word.end(), text.begin(), [](char a, char b) {
           return std::tolower(static_cast<unsigned char>(a)) ==
                  std::tolower(static_cast<unsigned char>(b));
         });
}

// `line` after the operator accepts `completion`, which replaces the last word
// if that is a prefix of it, and otherwise follows it.
std::string accepted(std::string const& line, std::string const& completion) {
  std::size_t const end = line.find_last_not_of(kBlanks) + 1;
  std::size_t const begin =
      end == 0 ? 0 : line.find_last_of(kBlanks, end - 1) + 1;
  bool const finished = end == 0 || line.back() == ' ';
  if (!finished && hasPrefix(completion, line.substr(begin, end - begin))) {
    return line.substr(0, begin) + completion;
  }
  return line + ' ' + completion;
}

class RandomCompletion : public PluginTest {
 protected:
  std::size_t below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }

  std::string word() {
    static std::vector<std::string> const words = {
        "filter",  "FILTER", "fil",     "f",       "filters", "show",
        "-",       "--",     "-i",      "-I",      "-v",      "-a",
        "-A",      "-B",     "-x",      "--i",     "--in",    "--ignore",
        "--AFTER", "--bef",  "--xyz",   "--after", "0",       "5",
        "99999",   "abc",    "\"a b\"", "\"",      "\"\"",    "a=",
        "[x]",     ",",      "a\"b\"",  "\\",      "<cr>",    "<pattern>"};
    return words[below(words.size())];
  }

  std::string anyBytes() {
    std::string bytes(below(8), ' ');
    for (char& c : bytes) c = static_cast<char>(1 + below(255));
    return bytes;
  }

  std::string blanks() {
    static std::vector<std::string> const all = {" ",  " ",  " ",
                                                 "  ", "\t", "\r"};
    return all[below(all.size())];
  }

  std::string line() {
    std::string text = below(4) == 0 ? blanks() : "";
    if (below(3) != 0) text += "filter" + blanks();
    for (std::size_t words = below(5); words != 0; --words) {
      text += (below(20) == 0 ? anyBytes() : word()) + blanks();
    }
    bool const ends = below(2) == 0;
    if (ends) text.erase(text.find_last_not_of(kBlanks) + 1);
    return text;
  }

  // Requests candidates and checks what holds for every request.
  ActionResult ask(unsigned action, std::string const& text) {
    session.clear();
    ActionResult const result = use(action, kActionId, text, "filter\n");
    EXPECT_TRUE(result.status == 0 || result.status == -1);
    EXPECT_TRUE(result.status == 0 || session.candidates.empty());
    EXPECT_EQ(0U, result.commandMatchCount);
    EXPECT_THAT(session.outputs, IsEmpty());
    EXPECT_THAT(session.otherCalls, IsEmpty());
    for (unsigned i = 0; i < session.candidates.size(); ++i) {
      EXPECT_EQ(i, session.candidates[i].index);
      EXPECT_EQ(session.candidates.size(), session.candidates[i].count);
      EXPECT_EQ(kActionId, session.candidates[i].actionId);
    }
    return result;
  }

  bool canContinue(std::string const& text) {
    if (ask(kComplete, text).status != 0) return false;
    if (!session.candidates.empty()) return true;
    return use(kExecute, kActionId, text, "").commandMatchCount == 1;
  }

  // The candidates that can be accepted literally.
  std::vector<std::string> insertable() const {
    std::vector<std::string> words;
    for (CandidateCall const& candidate : session.candidates) {
      if (!isPlaceholder(candidate.completion)) {
        words.push_back(candidate.completion);
      }
    }
    return words;
  }

  std::mt19937 random_{testSeed()};
};

TEST_F(RandomCompletion, EveryCandidateCanBeContinued) {
  std::size_t inserted = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string const text = line();
    ASSERT_NO_THROW(ask(kComplete, text)) << text;
    for (std::string const& completion : insertable()) {
      ASSERT_TRUE(canContinue(accepted(text, completion)))
          << '"' << text << "\" and " << completion;
      ++inserted;
    }
    ASSERT_FALSE(HasFailure()) << text;
  }
  EXPECT_GT(inserted, 1000U);  // otherwise the lines test little
}

TEST_F(RandomCompletion, HelpRunsNothing) {
  for (int i = 0; i < 20000; ++i) {
    std::string const text = line();
    ASSERT_NO_THROW(ask(kHelp, text)) << text;
    ASSERT_FALSE(HasFailure()) << text;
  }
}

TEST_F(RandomCompletion, CompletionAndHelpAgreeOnInvalidLines) {
  for (int i = 0; i < 5000; ++i) {
    std::string const text = line();
    ASSERT_EQ(ask(kComplete, text).status, ask(kHelp, text).status) << text;
  }
}

TEST(AcceptedCompletion, ReplacesItsPrefix) {
  EXPECT_EQ("filter", accepted("", "filter").substr(1));
  EXPECT_EQ("filter", accepted("fil", "filter"));
  EXPECT_EQ("  filter", accepted("  FIL", "filter"));
  EXPECT_EQ("filter", accepted("fil\t", "filter"));
  EXPECT_EQ("filter --after", accepted("filter --af", "--after"));
  EXPECT_EQ("filter --after", accepted("filter", "--after"));
  EXPECT_EQ("filter  --after", accepted("filter ", "--after"));
  EXPECT_EQ("filter -i --after", accepted("filter -i", "--after"));
}

}  // namespace
}  // namespace qor_test
