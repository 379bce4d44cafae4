#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "ContextRules.h"
#include "LineFilter.h"
#include "PatternError.h"
#include "PatternReader.h"
#include "Pcre2Expression.h"
#include "RandomPattern.h"
#include "Seed.h"
#include "SmallStack.h"

// A filter that skips lines that cannot match agrees with one that matches
// every line.

namespace qor_test {
namespace {

using QorCliMatching::LineFilter;
using QorCliMatching::PatternError;
using QorCliMatching::TimedExpression;
using QorCliPipe::ContextRules;
using Texts = std::vector<std::string>;

int const kPatterns = isSlowRun() ? 4000 : 40000;
constexpr std::size_t kMaxLines = 40;
constexpr std::size_t kMaxContext = 3;  // lines

std::size_t const kExhaustiveLength = isSlowRun() ? 3 : 4;
constexpr char kExhaustiveBytes[] = "ab|()?*.\\[]^";
constexpr std::size_t kMaxWord = 3;
constexpr char kWordBytes[] = "abB";

struct Options {
  bool ignoreCase;
  bool invert;
  int after;
  int before;
};

std::ostream& operator<<(std::ostream& out, Options const& options) {
  return out << "-i " << options.ignoreCase << " -v " << options.invert
             << " -a " << options.after << " -b " << options.before;
}

// Texts that take longer without skipping are not compared.
constexpr double kLittleTime = 0.1;  // seconds

// Far more than skipping can add.
constexpr double kMuchTime = 60;  // seconds

// Nothing if the pattern is rejected or a line fails.
std::optional<Texts> kept(std::string const& pattern, std::string const& text,
                          Options const& options,
                          LineFilter::Settings const& settings) {
  try {
    LineFilter filter(pattern, options.ignoreCase, settings);
    QorCliPipe::PipeCmd::FilterStruct state;
    Texts sink;
    ContextRules rules(options.after, options.before, state, sink);
    filter.filter(text, options.invert, rules);
    return sink;
  } catch (PatternError const&) {
    return std::nullopt;
  }
}

// Whether the pattern, which is valid, allows skipping lines.
bool hasRequiredText(std::string const& pattern, bool ignoreCase) {
  TimedExpression const expression(pattern, ignoreCase);
  return !QorCliMatching::readPattern(expression.items(pattern), ignoreCase)
              .anyOf.empty();
}

// All texts of up to `longest` bytes from `bytes`.
Texts allTexts(std::string const& bytes, std::size_t longest) {
  Texts texts{""};
  for (std::size_t begin = 0; texts.back().size() < longest;) {
    std::size_t const end = texts.size();
    for (; begin < end; ++begin) {
      for (char const c : bytes) texts.push_back(texts[begin] + c);
    }
  }
  return texts;
}

class SkippingAgreement : public testing::Test {
 protected:
  void compare(std::string const& pattern, std::string const& text,
               Options const& options) {
    auto const expected = kept(pattern, text, options, {false, kLittleTime});
    if (!expected) {
      ++uncompared_;
      return;
    }
    if (hasRequiredText(pattern, options.ignoreCase)) ++skipping_;
    ASSERT_EQ(expected, kept(pattern, text, options, {true, kMuchTime}))
        << pattern << ' ' << options << " over:\n"
        << testing::PrintToString(text);
  }

  int skipping_ = 0;    // comparisons in which lines could be skipped
  int uncompared_ = 0;  // rejected patterns, and slow texts
};

TEST_F(SkippingAgreement, OnAllShortPatternsAndWords) {
  std::string text;
  for (std::string const& word : allTexts(kWordBytes, kMaxWord)) {
    text += word + '\n';
  }
  int patterns = 0;
  for (std::string const& pattern :
       allTexts(kExhaustiveBytes, kExhaustiveLength)) {
    compare(pattern, text, {patterns % 2 == 0, false, 0, 0});
    ASSERT_FALSE(HasFatalFailure());
    ++patterns;
  }
  std::cout << skipping_ << " of " << patterns << " patterns skip" << std::endl;
  EXPECT_GT(skipping_, patterns / 20);
}

class RandomSkippingAgreement : public SkippingAgreement {
 protected:
  // Random patterns rarely contain long literals.
  std::string pattern() {
    std::string result = source_.pattern();
    for (std::size_t words = source_.below(3); words != 0; --words) {
      result.insert(source_.below(result.size() + 1), word());
    }
    return result;
  }

  std::string word() {
    std::string const words[] = {"ab", "abc", "bA", "c.", "|ab", "(bc|a)"};
    return words[source_.below(std::size(words))];
  }

  std::string text() {
    std::string result;
    for (std::size_t lines = source_.below(kMaxLines); lines != 0; --lines) {
      result += source_.line() + '\n';
    }
    return result + source_.line();
  }

  int context() { return static_cast<int>(source_.below(kMaxContext + 1)); }

  Options options() {
    return {source_.below(2) == 0, source_.below(2) == 0, context(), context()};
  }

  std::mt19937 random_{testSeed()};
  RandomPattern source_{random_};
};

TEST_F(RandomSkippingAgreement, OnRandomPatternsAndTexts) {
  for (int i = 0; i < kPatterns; ++i) {
    compare(pattern(), text(), options());
    ASSERT_FALSE(HasFatalFailure());
  }
  std::cout << skipping_ << " of " << kPatterns << " comparisons skip"
            << std::endl;
  EXPECT_GT(skipping_, kPatterns / 20);
  EXPECT_LT(uncompared_, kPatterns / 2);
}

}  // namespace
}  // namespace qor_test
