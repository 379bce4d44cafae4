#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>
#include <vector>

#include "Seed.h"
#include "TextSearch.h"

namespace {

using QorCliMatching::AnyTextSearch;
using QorCliMatching::beginOfLine;
using QorCliMatching::TextSearch;

constexpr int kCases = 20000;

std::string lowerCased(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return static_cast<char>(c < 0x80 ? std::tolower(c) : c);
  });
  return text;
}

std::size_t expectedIndex(std::string const& text, std::string const& substring,
                          std::size_t from, bool ignoreCase) {
  return ignoreCase ? lowerCased(text).find(lowerCased(substring), from)
                    : text.find(substring, from);
}

// Whether the plain search finds the text; TextSearch has to find the same.
bool finds(std::string const& searched, std::string const& substring,
           std::size_t from, bool ignoreCase) {
  std::size_t const index =
      expectedIndex(searched, substring, from, ignoreCase);
  EXPECT_EQ(index, TextSearch(substring, ignoreCase).find(searched, from))
      << testing::PrintToString(substring) << " in "
      << testing::PrintToString(searched) << " from " << from;
  return index != std::string::npos;
}

class TextSearchTest : public testing::Test {
 protected:
  std::size_t below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }

  // The first and the last letters in both cases, and bytes beside them that
  // differ only in the case bit.
  std::string text(std::size_t size) {
    std::string const bytes = "aaabzABZ@`[{0\x10\xC1\xE1\n";
    std::string result(size, ' ');
    for (char& c : result) c = bytes[below(bytes.size())];
    return result;
  }

  std::mt19937 random_{qor_test::testSeed()};
};

TEST_F(TextSearchTest, FindsWhatAPlainSearchFinds) {
  int found = 0;
  for (int i = 0; i < kCases; ++i) {
    std::string const searched = text(below(100));
    std::string const substring = text(1 + below(4));
    std::size_t const from = below(searched.size() + 1);
    bool const ignoreCase = below(2) == 0;
    if (finds(searched, substring, from, ignoreCase)) ++found;
    if (HasFailure()) break;
  }
  EXPECT_GT(found, kCases / 5);
}

TEST_F(TextSearchTest, FindsTheFirstOfSeveral) {
  for (int i = 0; i < kCases / 10; ++i) {
    std::string const searched = text(below(100));
    std::vector<std::string> const substring{text(2), text(3), text(2)};
    AnyTextSearch search(substring, false);
    search.reset(searched);
    for (std::size_t from = 0; from <= searched.size(); from += 1 + below(9)) {
      std::size_t nearest = std::string::npos;
      for (std::string const& one : substring)
        nearest = std::min(nearest, searched.find(one, from));
      ASSERT_EQ(nearest, search.find(from))
          << testing::PrintToString(substring);
    }
  }
}

TEST_F(TextSearchTest, FindsLongTexts) {
  int found = 0;
  for (int i = 0; i < kCases / 10; ++i) {
    std::string const searched = text(300);
    std::size_t const size = 5 + below(60);
    bool const ignoreCase = below(2) == 0;
    std::size_t const from = below(200);
    std::string substring = searched.substr(below(230), size);
    if (below(2) == 0) substring[below(size)] = 'z';
    if (finds(searched, substring, from, ignoreCase)) ++found;
    if (HasFailure()) break;
  }
  EXPECT_GT(found, kCases / 100);
}

// The last vector load must not read past the end.
TEST_F(TextSearchTest, FindsTheLastOccurrenceAtAnyLength) {
  for (std::size_t size = 2; size < 80; ++size) {
    std::vector<char> const searched = [size] {
      std::vector<char> bytes(size, 'x');
      bytes[size - 2] = 'a';
      bytes[size - 1] = 'b';
      return bytes;
    }();
    std::string_view const text(searched.data(), size);
    EXPECT_EQ(size - 2, TextSearch("ab", false).find(text, 0));
    EXPECT_EQ(size - 1, TextSearch("b", false).find(text, 0));
    EXPECT_EQ(std::string::npos, TextSearch("ab", false).find(text, size - 1));
    EXPECT_EQ(std::string::npos, TextSearch("ab", false).find(text, size));
    EXPECT_EQ(std::string::npos, TextSearch("bx", false).find(text, 0));
  }
}

TEST(AnyTextSearchTest, FindsNothingWithoutSubstrings) {
  AnyTextSearch search({}, false);
  search.reset("a");
  EXPECT_TRUE(search.empty());
  EXPECT_EQ(std::string::npos, search.find(0));
}

TEST(AnyTextSearchTest, StartsOverWithANewText) {
  AnyTextSearch search({"a", "b"}, true);
  EXPECT_FALSE(search.empty());
  search.reset("xxA");
  EXPECT_EQ(2U, search.find(0));
  EXPECT_EQ(std::string::npos, search.find(3));
  search.reset("xB");
  EXPECT_EQ(1U, search.find(0));
}

TEST(BeginOfLine, FollowsThePreviousLineFeed) {
  std::string const text = "ab\n\ncd\n";
  std::size_t const expected[] = {0, 0, 0, 3, 4, 4, 4};
  for (std::size_t place = 0; place < text.size(); ++place) {
    EXPECT_EQ(expected[place], beginOfLine(text, place)) << place;
  }
}

}  // namespace
