#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>
#include <vector>

#include "Seed.h"
#include "TextSearch.h"

namespace {

using QorCliPipe::AnyTextSearch;
using QorCliPipe::TextSearch;

constexpr int kCases = 20000;

std::string lowerCased(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return static_cast<char>(c < 0x80 ? std::tolower(c) : c);
  });
  return text;
}

std::size_t expectedPlace(std::string const& text, std::string const& wanted,
                          std::size_t from, bool ignoreCase) {
  return ignoreCase ? lowerCased(text).find(lowerCased(wanted), from)
                    : text.find(wanted, from);
}

class TextSearchTest : public testing::Test {
 protected:
  std::size_t below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }

  // Letters of both cases beside bytes that differ from others in the bit that
  // tells the cases apart.
  std::string text(std::size_t size) {
    std::string const bytes = "aaabAB@`[{0\x10\xC1\xE1\n";
    std::string result(size, ' ');
    for (char& c : result) c = bytes[below(bytes.size())];
    return result;
  }

  std::mt19937 random_{qor_test::testSeed()};
};

TEST_F(TextSearchTest, findsWhatAPlainSearchFinds) {
  int found = 0;
  for (int i = 0; i < kCases; ++i) {
    std::string const searched = text(below(100));
    std::string const wanted = text(1 + below(4));
    std::size_t const from = below(searched.size() + 1);
    bool const ignoreCase = below(2) == 0;
    std::size_t const place = expectedPlace(searched, wanted, from, ignoreCase);
    ASSERT_EQ(place, TextSearch(wanted, ignoreCase).find(searched, from))
        << testing::PrintToString(wanted) << " in "
        << testing::PrintToString(searched) << " from " << from;
    if (place != std::string::npos) ++found;
  }
  EXPECT_GT(found, kCases / 5);
}

TEST_F(TextSearchTest, findsTheFirstOfSeveral) {
  for (int i = 0; i < kCases / 10; ++i) {
    std::string const searched = text(below(100));
    std::vector<std::string> const wanted{text(2), text(3), text(2)};
    AnyTextSearch search(wanted, false);
    search.reset(searched);
    for (std::size_t from = 0; from <= searched.size(); from += 1 + below(9)) {
      std::size_t nearest = std::string::npos;
      for (std::string const& one : wanted)
        nearest = std::min(nearest, searched.find(one, from));
      ASSERT_EQ(nearest, search.find(from)) << testing::PrintToString(wanted);
    }
  }
}

}  // namespace
