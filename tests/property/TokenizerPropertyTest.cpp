#include <gtest/gtest.h>

#include <random>
#include <string>

#include "AutoCompleteTree.h"
#include "PipeOutput1.h"
#include "Seed.h"
#include "TokenizerOracle.h"

namespace qor_test {
namespace {

Tokenized tokenized(std::string const& line) {
  QorCliUtilities::AutoCompleteTree const tree;
  QorCliPipe::PipeOutput1 output;
  Tokenized result{false, {}};
  result.accepted = tree.tokenize(line, result.tokens, output);
  EXPECT_TRUE(output.getOutput().empty());
  return result;
}

// All lines of `length` letters of `alphabet`.
template <class Check>
void forEachLine(std::string const& alphabet, std::size_t length,
                 Check const& check) {
  std::vector<std::size_t> digits(length, 0);
  std::string line(length, alphabet[0]);
  while (true) {
    check(line);
    std::size_t i = 0;
    while (i < length && ++digits[i] == alphabet.size()) {
      digits[i] = 0;
      line[i++] = alphabet[0];
    }
    if (i == length) return;
    line[i] = alphabet[digits[i]];
  }
}

class ShortLines : public testing::TestWithParam<char const*> {};

TEST_P(ShortLines, AreTokenizedLikeTheExpressions) {
  std::size_t lines = 0;
  for (std::size_t length = 0; length <= 8; ++length) {
    forEachLine(GetParam(), length, [&](std::string const& line) {
      ++lines;
      if (tokenized(line) == tokenizedByExpressions(line)) return;
      ADD_FAILURE() << "line: {" << line << "}";
    });
  }
  EXPECT_GT(lines, 5000U);
}

// Characters relevant to quotes, to their neighbours, to punctuation, and white
// space other than a blank; separately, since the oracle is slow.
INSTANTIATE_TEST_SUITE_P(Alphabets, ShortLines,
                         testing::Values("a\"\\ =)", "a\"(> ", "a\"\\,[",
                                         "]\"\\ ", "a]\t\"\n"));

TEST(RandomLines, AreTokenizedLikeTheExpressions) {
  std::mt19937 random(testSeed());
  std::string const alphabet = "ab\"\"\\ \t\n\v\f\r=,[]()>x:1|'\xA0\xC3";
  for (int i = 0; i < 20000; ++i) {
    std::string line(random() % 300, ' ');
    for (char& c : line) c = alphabet[random() % alphabet.size()];
    ASSERT_TRUE(tokenized(line) == tokenizedByExpressions(line))
        << "line: {" << line << "}";
  }
}

}  // namespace
}  // namespace qor_test
