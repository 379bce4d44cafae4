#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "LineMatcher.h"
#include "LinearExpression.h"
#include "PatternError.h"
#include "Pcre2Expression.h"
#include "Pcre2Oracle.h"
#include "RandomPattern.h"
#include "Seed.h"
#include "SmallStack.h"

// Every backend that supports a pattern agrees with PCRE2's interpreter, even
// if the matcher would prefer another backend.

namespace qor_test {
namespace {

using namespace QorCliMatching;

constexpr std::size_t kLinesPerPattern = 20;
int const kPairs = isSlowRun() ? 50'000 : 1'000'000;

std::size_t const kExhaustivePattern = isSlowRun() ? 4 : 6;  // bytes
constexpr char kPatternBytes[] = "1b()|*?+";
constexpr std::size_t kExhaustiveLine = 4;
constexpr char kLineBytes[] = "1b";

// Far more than the oracle's match limit takes, even under valgrind.
constexpr double kSeconds = 60;

std::string lowerCased(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  }
  return text;
}

// ---- Backends

struct Backend {
  // Nothing: the backend cannot tell.
  using Answer = std::function<std::optional<bool>(std::string const&)>;

  char const* name;
  Answer matches;
};

// A pattern in every backend that supports it.
class Backends {
 public:
  // Throws PatternError when the pattern is rejected.
  Backends(std::string const& pattern, bool ignoreCase)
      : matcher_(pattern, ignoreCase, kSeconds),
        interpreter_(pattern, ignoreCase) {
    backends_.push_back({"the matcher", [this](std::string const& line) {
                           matcher_.beginCall();
                           return matcher_.matches(line);
                         }});
    backends_.push_back({"interpreter", answerOf(interpreter_)});
    if (facts().jitAgrees) addJitCode(pattern, ignoreCase);
    if (interpreter_.mayMatchEmpty()) return;
    addPlain(pattern, ignoreCase);
    addLinear();
  }
  Backends(Backends const&) = delete;
  Backends& operator=(Backends const&) = delete;

  PatternFacts const& facts() const { return matcher_.facts(); }
  LineMatcher& matcher() { return matcher_; }
  std::vector<Backend> const& all() const { return backends_; }
  bool isPlain() const { return plain_ != nullptr; }
  bool isLinear() const { return linear_ != nullptr; }

 private:
  static Backend::Answer answerOf(TimedExpression& timed) {
    return [&timed](std::string const& line) {
      TimeBudget budget(kSeconds);
      return timed.matches(line, budget);
    };
  }

  void addJitCode(std::string const& pattern, bool ignoreCase) {
    jitCode_ = std::make_unique<TimedExpression>(pattern, ignoreCase);
    jitCode_->useJitCode();
    backends_.push_back({"JIT code with callouts", answerOf(*jitCode_)});
  }

  void addPlain(std::string const& pattern, bool ignoreCase) {
    if (facts().backtracking.loops == Backtracking::kUnbounded) return;
    plain_ = std::make_unique<PlainExpression>(pattern, ignoreCase,
                                               !facts().hasLoopAndChoice);
    backends_.push_back(
        {"plain JIT code",
         [this](std::string const& line) -> std::optional<bool> {
           PlainExpression::Answer const answer = plain_->match(line);
           if (answer == PlainExpression::Answer::kUnknown) return std::nullopt;
           return answer == PlainExpression::Answer::kMatch;
         }});
  }

  void addLinear() {
    if (facts().regular.empty()) return;
    linear_ =
        std::make_unique<LinearExpression>(facts().regular, facts().ignoreCase);
    if (!linear_->isUsable()) {
      linear_.reset();
      return;
    }
    backends_.push_back({"RE2", [this](std::string const& line) {
                           return linear_->matches(line);
                         }});
  }

  LineMatcher matcher_;
  TimedExpression interpreter_;
  std::unique_ptr<TimedExpression> jitCode_;
  std::unique_ptr<PlainExpression> plain_;
  std::unique_ptr<LinearExpression> linear_;
  std::vector<Backend> backends_;
};

// Null if the pattern is rejected.
std::unique_ptr<Backends> backendsOf(std::string const& pattern,
                                     bool ignoreCase) {
  try {
    return std::make_unique<Backends>(pattern, ignoreCase);
  } catch (PatternError const&) {
    return nullptr;
  }
}

std::optional<bool> answer(Backend const& backend, std::string const& line,
                           Pcre2Oracle const& oracle) {
  try {
    return backend.matches(line);
  } catch (PatternError const& error) {
    EXPECT_TRUE(oracle.hasEndlessCall(line))
        << backend.name << ": " << error.what();
    return std::nullopt;
  }
}

// ---- The comparison

struct Count {
  // Patterns.
  int rejected = 0;
  int plain = 0;     // supported by the plain backend
  int linear = 0;    // supported by RE2
  int required = 0;  // with a required text
  int sufficient = 0;
  int canFind = 0;
  // Pairs of a pattern and a line.
  int undecided = 0;  // by the oracle
  int matched = 0;
  int unmatched = 0;

  int pairs() const { return matched + unmatched; }
};

std::ostream& operator<<(std::ostream& out, Count const& count) {
  return out << "patterns: " << count.rejected << " rejected, " << count.plain
             << " plain, " << count.linear << " regular, " << count.required
             << " with required texts, " << count.sufficient
             << " of them sufficient, " << count.canFind
             << " searched across lines; lines: " << count.matched
             << " matched, " << count.unmatched << " not, " << count.undecided
             << " undecided";
}

// One pattern against its oracle.
class Comparison {
 public:
  Comparison(std::string const& pattern, bool ignoreCase, Count& count)
      : oracle_(pattern, ignoreCase),
        backends_(backendsOf(pattern, ignoreCase)),
        count_(count) {
    EXPECT_EQ(oracle_.isValid(), backends_ != nullptr) << "valid?";
    if (!oracle_.isValid()) ++count_.rejected;
    if (!isValid()) return;
    if (backends_->isPlain()) ++count_.plain;
    if (backends_->isLinear()) ++count_.linear;
    if (!backends_->facts().anyOf.empty()) ++count_.required;
    if (backends_->facts().sufficient) ++count_.sufficient;
    if (backends_->matcher().canFind()) ++count_.canFind;
  }

  bool isValid() const { return oracle_.isValid() && backends_ != nullptr; }

  void compare(std::string const& line) {
    std::optional<bool> const expected = oracle_.matches(line);
    if (!expected) {
      ++count_.undecided;
      return;
    }
    ++(*expected ? count_.matched : count_.unmatched);
    for (Backend const& backend : backends_->all()) {
      std::optional<bool> const found = answer(backend, line, oracle_);
      if (found && *found != *expected) {
        ADD_FAILURE() << backend.name << " says " << *found << " on "
                      << testing::PrintToString(line);
      }
    }
    compareTexts(line, *expected);
  }

  // Searches all lines at once.
  void compareFinding(std::vector<std::string> const& lines) const {
    if (!backends_->matcher().canFind()) return;
    std::string text;
    for (std::string const& line : lines) text += line + '\n';
    LineMatcher::Span span{0, 0};
    std::size_t begin = 0;
    for (std::string const& line : lines) {
      std::size_t const end = begin + line.size();  // its line feed
      if (span.begin <= end) span = backends_->matcher().find(text, begin);
      bool const isHere = span.begin <= end;
      bool const isInside = isHere && span.end <= end;
      EXPECT_TRUE(isHere || oracle_.matches(line) != true) << "missed " << line;
      EXPECT_TRUE(!isInside || oracle_.matches(line) != false) << line;
      begin = end + 1;
    }
  }

 private:
  void compareTexts(std::string const& line, bool expected) const {
    PatternFacts const& facts = backends_->facts();
    auto const folded = [&facts](std::string const& text) {
      return facts.ignoreCase ? lowerCased(text) : text;
    };
    bool const holds = std::any_of(
        facts.anyOf.begin(), facts.anyOf.end(), [&](std::string const& text) {
          return folded(line).find(folded(text)) != std::string::npos;
        });
    EXPECT_TRUE(holds || !expected || facts.anyOf.empty())
        << "no required text in " << testing::PrintToString(line);
    EXPECT_TRUE(!facts.sufficient || holds == expected)
        << "required text in " << testing::PrintToString(line);
  }

  Pcre2Oracle oracle_;
  std::unique_ptr<Backends> backends_;
  Count& count_;
};

// ---- Random patterns and lines

class MatcherAgreement : public testing::Test {
 protected:
  void comparePattern(std::string const& pattern, bool ignoreCase) {
    SCOPED_TRACE(testing::PrintToString(pattern) +
                 (ignoreCase ? " ignoring case" : ""));
    Comparison comparison(pattern, ignoreCase, count_);
    if (!comparison.isValid()) return;
    std::vector<std::string> lines(kLinesPerPattern);
    for (std::string& line : lines) {
      line = source_.line();
      comparison.compare(line);
    }
    comparison.compareFinding(lines);
  }

  std::mt19937 random_{testSeed()};
  RandomPattern source_{random_};
  Count count_;
};

TEST_F(MatcherAgreement, OnRandomPatternsAndLines) {
  int patterns = 0;
  for (; count_.pairs() < kPairs && !HasFailure(); ++patterns) {
    bool const isCommon = patterns % 2 == 0;
    comparePattern(isCommon ? source_.commonPattern() : source_.pattern(),
                   source_.below(3) == 0);
  }
  std::cout << count_ << std::endl;
  EXPECT_GT(count_.rejected, patterns / 20);
  EXPECT_GT(count_.plain, patterns / 10);
  EXPECT_GT(count_.linear, patterns / 10);
  EXPECT_GT(count_.required, patterns / 20);
  EXPECT_GT(count_.sufficient, patterns / 50);
  EXPECT_GT(count_.canFind, patterns / 50);
  EXPECT_GT(count_.matched, kPairs / 10);
  EXPECT_GT(count_.unmatched, kPairs / 10);
  EXPECT_LT(count_.undecided, kPairs / 20);
}

// ---- All short patterns and lines

// All texts of up to `longest` bytes from `bytes`.
std::vector<std::string> allTexts(std::string const& bytes,
                                  std::size_t longest) {
  std::vector<std::string> texts{""};
  for (std::size_t begin = 0; texts.back().size() < longest;) {
    std::size_t const end = texts.size();
    for (; begin < end; ++begin) {
      for (char const c : bytes) texts.push_back(texts[begin] + c);
    }
  }
  return texts;
}

TEST_F(MatcherAgreement, OnAllShortPatternsAndLines) {
  std::vector<std::string> const lines = allTexts(kLineBytes, kExhaustiveLine);
  std::vector<std::string> const patterns =
      allTexts(kPatternBytes, kExhaustivePattern);
  for (std::string const& pattern : patterns) {
    SCOPED_TRACE(pattern);
    Comparison comparison(pattern, false, count_);
    if (!comparison.isValid()) continue;
    for (std::string const& line : lines) comparison.compare(line);
    comparison.compareFinding(lines);
    if (HasFailure()) break;
  }
  std::cout << count_ << std::endl;
  EXPECT_GT(count_.plain, 0);
  EXPECT_GT(count_.linear, 0);
  EXPECT_LT(count_.undecided, 100);  // endless recursion
}

// ---- Chosen patterns and lines

std::string repeated(std::string const& text, std::size_t count) {
  std::string result;
  while (count-- != 0) result += text;
  return result;
}

struct Row {
  std::string pattern;
  std::string line;
  bool matches;
  bool ignoreCase = false;
};

std::ostream& operator<<(std::ostream& out, Row const& row) {
  return out << testing::PrintToString(row.pattern.substr(0, 80)) << " on "
             << testing::PrintToString(row.line.substr(0, 80))
             << (row.ignoreCase ? " ignoring case" : "");
}

class ChosenPattern : public testing::TestWithParam<Row> {};

TEST_P(ChosenPattern, IsMatchedByEveryBackend) {
  Row const& row = GetParam();
  Pcre2Oracle const oracle(row.pattern, row.ignoreCase);
  ASSERT_TRUE(oracle.isValid());
  EXPECT_EQ(row.matches, oracle.matches(row.line));
  Backends backends(row.pattern, row.ignoreCase);
  for (Backend const& backend : backends.all()) {
    EXPECT_EQ(row.matches, answer(backend, row.line, oracle)) << backend.name;
  }
}

// JIT code without callouts misses these in PCRE2 10.42.
INSTANTIATE_TEST_SUITE_P(
    EmptyAlternatives, ChosenPattern,
    testing::Values(Row{"(1|)b*1", "1", true}, Row{"(?:1|)b*1", "1", true},
                    Row{"(|1)b*1", "1", true}, Row{"(1|b|)b*1", "1", true},
                    Row{"(1|(?:))b*1", "1", true}, Row{"(1?)b*1", "1", true},
                    Row{"((?:1)?)b*1", "1", true}, Row{"(1||b)b+1", "b1", true},
                    Row{"(?>(?||)()a|)a", "a", false},
                    Row{"(?<n>(?:a(?:)?|){0,2}|\\k<n>)A", "a", true, true}));

// So does JIT code with start optimizations.
INSTANTIATE_TEST_SUITE_P(
    LoopsAndChoices, ChosenPattern,
    testing::Values(Row{"(bba|b)(a*?)a", "bba", true},
                    Row{"(?:bba|b)a*?a", "bba", true},
                    Row{"(?:bb)?a*?a", "bba", true},
                    Row{"([]a].[\\w.-]|[]a])[ab]+?ab", "-\r]Aab", true, true},
                    Row{"([]a].[\\w.-]|[]a])[ab]+?ab", "abab", true},
                    Row{"([]a].[\\w.-]|[]a])[ab]+?ab", "-\rAB-b", false,
                        true}));

INSTANTIATE_TEST_SUITE_P(
    Quantifiers, ChosenPattern,
    testing::Values(Row{"0{02}", "00", true}, Row{"0{02}", "0", false},
                    Row{"0{02}", "0{02}", false}, Row{"0{1,02}1", "001", true},
                    Row{"(?:b|^-){0}[^a]", "b", true},
                    Row{"(?:(b|^-){0}[^a])", "b", true},
                    Row{"(?:(b|^-){0}[^a])", "a", false},
                    Row{"(?:(b|^-){0}[^a])", "-", true},
                    Row{"a{0}b", "b", true}, Row{"a{,}", "a{,}", true},
                    Row{"a{", "a{", true}, Row{"a{1", "a{1", true},
                    Row{"a{x}", "a{x}", true}, Row{"a{2}?b", "aab", true},
                    Row{"a{1000}", std::string(1000, 'a'), true},
                    Row{"a{1001}", std::string(1000, 'a'), false}));

INSTANTIATE_TEST_SUITE_P(
    NonAsciiBytes, ChosenPattern,
    testing::Values(
        Row{"\xC3\xA4+?|\xC3\xA4", "x\xC3\xA4", true},
        Row{"\xC3\xA4|\xC3\xB6", "\xC3\xB6", true},
        Row{"\xC3\xA4", "\xC3\x84", false, true},
        Row{"\xE4", "\xC4", false, true},
        Row{"[\xE0-\xEF]", "\xC4", false, true},
        Row{"[^\xE4]", "\xC4", true, true}, Row{"[^\xE4]", "\xE4", false, true},
        Row{"\\xE4", "\xC4", false, true}, Row{"[\\xE4]", "\xC4", false, true},
        Row{"\\w", "\xE4", false}, Row{"\\W", "\xE4", true},
        Row{"\\s", "\xA0", false}, Row{"\\s", "\x85", false},
        Row{"[[:alpha:]]", "\xE4", false}, Row{"a\\b", "a\xE4", true},
        Row{"^.$", "\xC3\xA4", false}, Row{"^..$", "\xC3\xA4", true},
        Row{"k", "\xE2\x84\xAA", false, true},
        Row{"s", "\xC5\xBF", false, true}));

// RE2's \s lacks the vertical tab.
INSTANTIATE_TEST_SUITE_P(
    Blanks, ChosenPattern,
    testing::Values(
        Row{"a\\sb", "a\vb", true}, Row{"a\\Sb", "a\vb", false},
        Row{"a[\\s]b", "a\vb", true}, Row{"a[^\\s]b", "a\vb", false},
        Row{"a[\\S]b", "a\vb", false}, Row{"a[^\\S]b", "a\vb", true},
        Row{"a[\\S\\v]b", "a\vb", true}, Row{"a[[:space:]]b", "a\vb", true},
        Row{"a[[:^space:]]b", "a\vb", false}, Row{"a[x\\sy]b", "a\fb", true},
        Row{"a\\hb", "a\vb", false}, Row{"a\\vb", "a\vb", true}));

// JIT code with callouts disagrees with the interpreter on these.
INSTANTIATE_TEST_SUITE_P(
    PossessiveAndCalledGroups, ChosenPattern,
    testing::Values(
        Row{"(?:c?+(\\N++)*+A)*+c\\g{1}", "ccA", false},
        Row{"(?:c?+(\\N++)*+A)*+c\\g{1}", "cAcc", false},
        Row{"(?:\\X|)?+.", "b", false}, Row{"(?i:A((?:.|)?+A))", "aa", false},
        Row{"(?<n>)*+c|(?(1)AA?)", "bb A", false},
        Row{"(?<n>c{2,}|(?(1)a))*+ab", "Ac ab", true},
        Row{"(?i)(?<n>c)*+\\w(?P=n)", "Cabc", false},
        Row{"(a*)b|(?1)", " b", false}, Row{"(b*)c|\\x61\\g<1>{2}", "a", true},
        Row{"\\g<1>z|(\\.*b)", "b", true}, Row{"(?<n>\\N++)a|(?&n)", "-", true},
        Row{"((?:([^a]*+))b)|(?2)", "-", true}));

INSTANTIATE_TEST_SUITE_P(
    Lines, ChosenPattern,
    testing::Values(Row{"a$", "a\r", false}, Row{"^.b", "\rb", true},
                    Row{"(?m)^b", "a\rb", false},
                    Row{"(*CR)(?m)^b", "a\rb", true}, Row{".*b$", "a\rb", true},
                    Row{"a\\R", "a\r", true}, Row{"(*CRLF)a$", "a\r", false},
                    Row{"(*CR)a$", "a\r", true}, Row{"a\\Z", "a", true},
                    Row{"a\\z", "ab", false}));

INSTANTIATE_TEST_SUITE_P(
    Utf8, ChosenPattern,
    testing::Values(Row{"(*UTF8)^.$", "\xC3\xA4", true},
                    Row{"(*UTF)^.$", "\xC3\xA4", true},
                    Row{"(*UTF8)(?i)\xC3\xA4", "\xC3\x84", true},
                    Row{"(*UTF8)\\x{20ac}", "\xE2\x82\xAC", true},
                    Row{"(*UTF8)(*UCP)^\\w$", "\xC3\xA4", true},
                    Row{"(*UTF8)a", "xa", true},
                    Row{"(*UTF8)[\\x{80}-\\x{82}]", "\xE2\x82\xAC", false},
                    Row{"(*UTF8)" + repeated("(a)", 21) + "\xC3\xA4",
                        std::string(21, 'a') + "\xC3\xA4", true}));

INSTANTIATE_TEST_SUITE_P(
    StartsAndVerbs, ChosenPattern,
    testing::Values(
        Row{"(*NO_START_OPT)ab", "xab", true}, Row{"(*COMMIT)ab", "xab", true},
        Row{"(*NO_START_OPT)(*COMMIT)ab", "xab", false},
        Row{"(*LIMIT_MATCH=1000000)ab", "xab", true}, Row{"\\Ga", "ba", false},
        Row{"\\Ga", "ab", true}, Row{"(?:b+?(*THEN))c", "Bbc", true},
        Row{".+(*PRUNE)}|c", "cc", false}, Row{"(0*(*SKIP))0|[a]", "0a", false},
        Row{"a((?=(*THEN)a))?", "a", true},
        Row{"((?=(*THEN)W)){0,}a", "a", true}));

INSTANTIATE_TEST_SUITE_P(
    References, ChosenPattern,
    testing::Values(
        Row{"^(.+)-\\1$", "ab-ab", true}, Row{"^(.+)-\\1$", "ab-ba", false},
        Row{"(a)?\\1b", "b", false}, Row{"(?i)(a)\\1", "aA", true},
        Row{"(?<n>a)\\k<n>", "aa", true}, Row{"(a)(?-1)", "aa", true},
        Row{"^(a|b(?1)c)$", "bbacc", true}, Row{"^(a|b(?1)c)$", "bbac", false},
        Row{"a(?R)?b", "aabb", true},
        Row{"(?(DEFINE)(?<n>a+))^(?&n)$", "aaa", true}));

INSTANTIATE_TEST_SUITE_P(
    Lookarounds, ChosenPattern,
    testing::Values(Row{"(?<=a)b", "ab", true}, Row{"(?<=a)b", "cb", false},
                    Row{"(?<!a)b", "ab", false}, Row{"(?<=a|bc)d", "bcd", true},
                    Row{"(?<=^)a", "a", true}, Row{"a(?=b)", "ab", true},
                    Row{"(?=(.*)).b", "Axb", true},
                    Row{"(?=.*).b", "Axb", true},
                    Row{"(?=\\N*).b", "Axb", true},
                    Row{"(?=.{0,}).b", "Axb", true}));

INSTANTIATE_TEST_SUITE_P(
    EmptyMatches, ChosenPattern,
    testing::Values(Row{"(?=a)", "a", false}, Row{"a*", "ba", false},
                    Row{"a*", "ab", true}, Row{"a*$", "ba", true},
                    Row{"", "a", false}, Row{"^", "a", false},
                    Row{"a||b", "a", true}, Row{"a||b", "b", false},
                    Row{"ab\\K", "xab", false}, Row{"a\\Kb", "xab", true},
                    Row{"x?|y", "y", false}, Row{"(?:x?){3}", "x", true}));

INSTANTIATE_TEST_SUITE_P(
    ManyGroups, ChosenPattern,
    testing::Values(Row{repeated("(a)", 300), std::string(300, 'a'), true},
                    Row{repeated("(a)", 300), std::string(299, 'a'), false},
                    Row{repeated("(a)", 21) + "(b|c)\\22$",
                        std::string(21, 'a') + "bb", true},
                    Row{repeated("(a)", 21) + "(b|c)\\22$",
                        std::string(21, 'a') + "bc", false},
                    Row{repeated("(a)", 40) + "(?:(b)|c)?+(?(41)b|c)$",
                        std::string(40, 'a') + "bb", true},
                    Row{repeated("(", 249) + "a" + repeated(")", 249), "ba",
                        true}));

std::string const kBs(50'000, 'b');
std::string const kEuros = repeated("\xE2\x82\xAC", 20'000);

INSTANTIATE_TEST_SUITE_P(
    LongLines, ChosenPattern,
    testing::Values(
        Row{"^(?:(a)|b)*\\1c$", "a" + std::string(500, 'a') + "c", true},
        Row{"^(?:(a)|b)*\\1c$", std::string(500, 'a') + "bc", false},
        Row{"x.*.*.*[yz]", std::string(60, 'x'), false},
        Row{"x.*.*.*[yz]", std::string(60, 'x') + 'y', true},
        Row{"(*COMMIT)(a+)+$", std::string(15, 'a') + kBs, false},
        Row{"(?<n>a)a+\\k<n>c", kBs + "aaaac", true},
        Row{"(?<n>a)a+\\k<n>c", kBs + "aaaad", false},
        Row{"(?:(a)|x(?1)y)+c", kBs + "aaxayc", true},
        Row{"\\d+\\.\\d+", kBs + "1.5", true},
        Row{"b+c$", std::string(300, 'b') + "d", false},
        Row{"^.b", "A" + std::string(100, 'x') + kBs, false},
        Row{"(*UTF8)a*\\x{20ac}b", kEuros + "b", true},
        Row{"(*UTF8)x?+..b$", kEuros + "c", false},
        Row{"(*UTF8)(?:\\x{ac}|\\x{20ac}b)+", kEuros + "b", true},
        Row{"(*UTF8)a*[\\x{80}-\\x{82}]", kEuros, false},
        Row{"(*UTF8)\xC3\xA4?a++c", kBs + "aac", true}));

// ---- Patterns on which versions of PCRE2 differ

struct OddRow {
  std::string pattern;
  std::string line;
};

std::ostream& operator<<(std::ostream& out, OddRow const& row) {
  return out << row.pattern << " on " << testing::PrintToString(row.line);
}

class OddPattern : public testing::TestWithParam<OddRow> {};

TEST_P(OddPattern, MeansWhatPcre2Says) {
  Count count;
  Comparison comparison(GetParam().pattern, false, count);
  if (comparison.isValid()) comparison.compare(GetParam().line);
  EXPECT_EQ(1, count.rejected + count.pairs());
}

INSTANTIATE_TEST_SUITE_P(Counts, OddPattern,
                         testing::Values(OddRow{"a{,3}b", "a{,3}b"},
                                         OddRow{"^a{,3}b", "aab"},
                                         OddRow{"x[ab]{,3}", "x{,3}"},
                                         OddRow{"a{ 2}", "aa"},
                                         OddRow{"a{1, 2}b", "aab"}));

// PCRE2 makes a quantifier possessive.
INSTANTIATE_TEST_SUITE_P(Possessification, OddPattern,
                         testing::Values(OddRow{"(b+)(a)?+b", "bb"},
                                         OddRow{"b*(})?+b", "b"},
                                         OddRow{"(*LF)(.+\\R)", "a\r"},
                                         OddRow{".+\\R", "a\r"}));

INSTANTIATE_TEST_SUITE_P(KeptOutOfLookarounds, OddPattern,
                         testing::Values(OddRow{"(?=ab\\K)", "xaby"},
                                         OddRow{"(?=ab\\K)", "xab"},
                                         OddRow{"(?=a\\K)ab", "xab"},
                                         OddRow{"(?<=\\Ka)b", "ab"}));

// ---- Rejected patterns

class RejectedPattern : public testing::TestWithParam<char const*> {};

TEST_P(RejectedPattern, IsRejectedByPcre2AndTheMatcher) {
  EXPECT_FALSE(Pcre2Oracle(GetParam(), false).isValid());
  EXPECT_THROW(LineMatcher(GetParam(), false, kSeconds), PatternError);
}

INSTANTIATE_TEST_SUITE_P(Malformed, RejectedPattern,
                         testing::Values("(", ")", "[", "a**b", "\\", "(?<=a*)",
                                         "(?1)", "(?<n", "(?P>x)", "[[:x:]]",
                                         "a{2,1}", "(*NONE)", "(?<n>a)(?<n>b)",
                                         "(*UTF8)\xFF", "\\g{9}", "(?z)",
                                         "(*UTF8)[\\x{110000}]", "[b-a]", "*a",
                                         "a{65536}", "(?'n", "(?#"));

TEST(InvalidUtf8, FailsIfThePatternSelectsUtf8) {
  LineMatcher matcher("(*UTF8)a", false, kSeconds);
  EXPECT_THROW(matcher.matches("a\xFF"), PatternError);
  EXPECT_FALSE(Pcre2Oracle("(*UTF8)a", false).matches("a\xFF"));
  EXPECT_TRUE(matcher.matches("xa"));
}

TEST(LongPattern, IsRejectedBeyond64KiB) {
  std::size_t const longest = std::size_t{64} * 1024;
  std::string const comment = "a(?#" + std::string(longest - 5, 'c') + ')';
  EXPECT_NO_THROW(LineMatcher(comment, false, kSeconds));
  EXPECT_THROW(LineMatcher('a' + comment, false, kSeconds), PatternError);
}

}  // namespace
}  // namespace qor_test
