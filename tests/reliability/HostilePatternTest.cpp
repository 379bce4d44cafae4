#include <gtest/gtest.h>
#include <sys/time.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "PluginTest.h"
#include "Seed.h"
#include "SmallStack.h"

namespace qor_test {
namespace {

// Processor time. The matcher works on one line for a few seconds at most; the
// rest is for a machine that is slow or checks every access.
std::clock_t const kLongestCall = isSlowRun() ? 40 : 10;  // seconds

// A call that takes longer than this ends the program.
std::clock_t const kEndOfPatience = 3 * kLongestCall;  // seconds

// Ends the program when it uses that much processor time; 0 calls that off.
void limitProcessorTime(std::clock_t seconds) {
  itimerval timer{};
  timer.it_value.tv_sec = seconds;
  ASSERT_EQ(0, setitimer(ITIMER_PROF, &timer, nullptr));
}

constexpr unsigned kActionId = 8;
constexpr unsigned kOtherActionId = 9;

using Texts = std::vector<std::string>;

std::string quoted(std::string const& pattern) {
  return "filter \"" + pattern + '"';
}

std::string repeated(std::string const& text, std::size_t times) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

class HostilePattern : public PluginTest {
 public:
  static void TearDownTestSuite() {
    std::cout << "longest call: " << longestCall * 1000 / CLOCKS_PER_SEC
              << " ms of processor time" << std::endl;
  }

 protected:
  // Executes in the time that is allowed for it.
  ActionResult execute(std::string const& line, std::string const& input,
                       unsigned actionId = kActionId) {
    session.clear();
    std::clock_t const start = std::clock();
    limitProcessorTime(kEndOfPatience);
    ActionResult const result = use(kExecute, actionId, line, input);
    limitProcessorTime(0);
    std::clock_t const taken = std::clock() - start;
    EXPECT_LT(taken, kLongestCall * CLOCKS_PER_SEC);
    longestCall = std::max(longestCall, taken);
    return result;
  }

 private:
  // Of the test suites that this program has run so far.
  inline static std::clock_t longestCall = 0;
};

// ---- Patterns that no matcher with backtracking gets to the end of

struct Catastrophe {
  std::string pattern;
  std::string line;
};

std::ostream& operator<<(std::ostream& out, Catastrophe const& catastrophe) {
  return out << catastrophe.pattern << " on " << catastrophe.line.size()
             << " bytes";
}

std::vector<Catastrophe> catastrophes() {
  std::string const many(60, 'a');
  std::string const words = many + ' ' + many + ' ' + many;
  return {
      {"(a+)+$", many + '!'},
      {"(a|aa)+$", many + '!'},
      {"^(([a-z])+.)+[A-Z]([a-z])+$", words},
      {"(?:(?:a*)*)*[bc]$", many + '!'},
      {"(\\w+\\s?)+$", words + '?'},
      {"(?:a?){60}a{60}$", many + '!'},
      {"^(a+)+\\1[bc]", many + '!'},
      {"(?=(a+)+$)a", many + '!'},
      {"(?:(a+)+$|x)", many + '!'},
      {"(*UTF8)(a+)+$", many + '!'},
      {"(*NO_START_OPT)(a|a)+$", many + '!'},
      {"(*LIMIT_MATCH=4294967295)(a+)+$", many + '!'},
      {"(a+)+$", std::string(20000, 'a') + '!'},
      {"(*UTF8)(a|aa)+$", std::string(20000, 'a') + '!'},
      {"(a|aa)+$", std::string(1U << 20U, 'a') + '!'},
  };
}

class CatastrophicPattern : public HostilePattern,
                            public testing::WithParamInterface<Catastrophe> {
 protected:
  std::string const command_ = quoted(GetParam().pattern);
  std::string const line_ = GetParam().line + '\n';
};

TEST_P(CatastrophicPattern, EndsTheCallAtTheFirstLineThatIsGivenUpOn) {
  std::string lines;
  for (int i = 0; i < 50; ++i) lines += line_;
  ActionResult const result = execute(command_, lines);
  EXPECT_EQ(-1, result.status);
  EXPECT_EQ(1U, result.commandMatchCount);
  EXPECT_EQ(Texts{}, textsOf(session.outputs));
}

TEST_P(CatastrophicPattern, IsForgottenByTheNextCall) {
  EXPECT_EQ(-1, execute(command_, line_).status);
  EXPECT_EQ(0, execute("filter a$", "ba\nab\n").status);
  EXPECT_EQ(Texts{"ba\n"}, textsOf(session.outputs));
}

INSTANTIATE_TEST_SUITE_P(Patterns, CatastrophicPattern,
                         testing::ValuesIn(catastrophes()));

// ---- Lines on which each beginning of a match is soon given up, but there are
// many of them, and each looks at all the rest of the line

class LongScan : public HostilePattern,
                 public testing::WithParamInterface<char const*> {};

TEST_P(LongScan, FindsNothingOrGivesUp) {
  for (std::size_t const length : {1000U, 60000U, 1U << 20U}) {
    std::string const line(length, 'a');
    ActionResult const result = execute(quoted(GetParam()), line + '\n');
    EXPECT_TRUE(result.status == 0 || (result.status == -1 && length > 1000));
    EXPECT_EQ(Texts{}, textsOf(session.outputs));
  }
}

INSTANTIATE_TEST_SUITE_P(Patterns, LongScan,
                         testing::Values("a.*y", "a[^x]*+y", "(?=a.*y)b?",
                                         "(?=.*b)a", "a(?>.*)y", "(?:a|b)*+y",
                                         "(a*+)++y", "(*UTF8)a.*+y",
                                         "a{0,65535}y", "(?:a{0,9999}){0,99}y",
                                         "(?:[ab]{0,99}){0,99}x"));

// ---- Groups that call themselves: a step takes longer the more calls are
// under way, so that a number of steps is no bound for the time

class DeepCalls : public HostilePattern,
                  public testing::WithParamInterface<char const*> {};

TEST_P(DeepCalls, FindNothingOrAreGivenUpOn) {
  for (std::size_t const length : {10U, 2000U, 30000U}) {
    std::string const line = std::string(length, 'a') + "!\n";
    ActionResult const result = execute(quoted(GetParam()), line);
    EXPECT_TRUE(result.status == 0 || (result.status == -1 && length > 10))
        << length;
    EXPECT_EQ(Texts{}, textsOf(session.outputs));
  }
}

INSTANTIATE_TEST_SUITE_P(Patterns, DeepCalls,
                         testing::Values("(a(?1)?)+$|y", "(a(?1)?b?)+$",
                                         "(?:a(?R)?)+$|y", "(a|a(?1))+y?$",
                                         "(?<n>a(?&n)?)+$", "(a\\g<1>?)*+$"));

// ---- Long patterns

TEST_F(HostilePattern, OfManyCharactersEndsInTime) {
  struct {
    std::string pattern;
    std::size_t length;
  } const rows[] = {
      {repeated(".", 30000) + "[yz]", 1U << 20U},
      {repeated("\\w", 30000) + "[yz]", 1U << 20U},
      {"^(?:a|aa){24}" + repeated(".", 5000) + "[yz]", 20000},
      {std::string(30000, 'a') + 'b', 1U << 20U},
      {std::string(30000, 'a') + "[bc]", 1U << 20U},
  };
  for (auto const& row : rows) {
    ActionResult const result =
        execute(quoted(row.pattern), std::string(row.length, 'a') + '\n');
    EXPECT_TRUE(result.status == 0 || result.status == -1);
    EXPECT_EQ(Texts{}, textsOf(session.outputs));
  }
}

// ---- What is left of a call that gives up

constexpr char kCatastrophe[] = "(a+)+$";
std::string const kBadLine = std::string(60, 'a') + "!\n";

TEST_F(HostilePattern, ShowsTheFirstLineThatWasKept) {
  EXPECT_EQ(-1, execute(quoted(kCatastrophe), "1a\n2a\n" + kBadLine).status);
  EXPECT_EQ(Texts{"1a\n"}, textsOf(session.outputs));
}

TEST_F(HostilePattern, IsNoErrorOnTheLinesThatItDecides) {
  EXPECT_EQ(0, execute(quoted(kCatastrophe), "1a\nb\n2a\n").status);
  EXPECT_EQ((Texts{"1a\n", "2a\n"}), textsOf(session.outputs));
}

TEST_F(HostilePattern, ClearsTheStateOfAllActions) {
  for (unsigned const actionId : {kActionId, kOtherActionId}) {
    EXPECT_EQ(0, execute("filter -b 1 M", "x\n", actionId).status);
  }
  EXPECT_EQ(-1, execute(quoted(kCatastrophe), kBadLine).status);
  for (unsigned const actionId : {kActionId, kOtherActionId}) {
    EXPECT_EQ(0, execute("filter -b 1 M", "M\n", actionId).status);
    EXPECT_EQ(Texts{"M\n"}, textsOf(session.outputs));
  }
}

TEST_F(HostilePattern, DoesNotClearTheStateWhenItDecides) {
  EXPECT_EQ(0, execute("filter -b 1 M", "x\n", kOtherActionId).status);
  EXPECT_EQ(0, execute(quoted(kCatastrophe), "a\n").status);
  EXPECT_EQ(0, execute("filter -b 1 M", "M\n", kOtherActionId).status);
  EXPECT_EQ((Texts{"x\n", "M\n"}), textsOf(session.outputs));
}

// ---- Patterns that are hard to compile

// A pattern that is too long to be printed whole.
struct LongPattern {
  LongPattern(std::string const& pattern) : text(pattern) {}
  LongPattern(char const* pattern) : text(pattern) {}

  std::string text;
};

std::ostream& operator<<(std::ostream& out, LongPattern const& pattern) {
  constexpr std::size_t shown = 40;  // bytes
  return out << pattern.text.substr(0, shown) << " of " << pattern.text.size()
             << " bytes";
}

// Groups of which each calls the next one twice.
std::string callingGroups(std::size_t count, std::string const& zeros = "") {
  std::string result;
  for (std::size_t i = 1; i <= count; ++i) {
    std::string const call = "(?" + zeros + std::to_string(i + 1) + ')';
    result += "(a?" + call + call + ')';
  }
  return result + "(a?)";
}

class HardToCompile : public HostilePattern,
                      public testing::WithParamInterface<LongPattern> {};

TEST_P(HardToCompile, IsUsedOrRefused) {
  ActionResult const result = execute(quoted(GetParam().text), "ab\n");
  EXPECT_EQ(1U, result.commandMatchCount);
  EXPECT_TRUE(result.status == 0 || result.status == -1);
  EXPECT_TRUE(result.status == 0 || session.outputs.empty());
}

constexpr std::size_t kManyTimes = 200000;

INSTANTIATE_TEST_SUITE_P(
    Pieces, HardToCompile,
    testing::Values(
        repeated("(", kManyTimes), repeated("(?:", kManyTimes),
        repeated("[", kManyTimes), repeated("[[:", kManyTimes),
        repeated("[[:alpha:]", kManyTimes), repeated("[^]", kManyTimes),
        repeated("a|", kManyTimes), repeated("()", kManyTimes),
        repeated("(a)", kManyTimes), repeated("\\1", kManyTimes),
        repeated("(?1)", kManyTimes), repeated("(?R)", kManyTimes),
        repeated("(?(1)", kManyTimes), repeated("(?(?=a)", kManyTimes),
        repeated("(?#", kManyTimes), repeated("\\Q", kManyTimes),
        repeated("(?<n>", kManyTimes), repeated("(?P>n)", kManyTimes),
        repeated("\\k<n>", kManyTimes), repeated("(?|", kManyTimes),
        repeated("(?i)", kManyTimes), repeated("(*UTF8)", kManyTimes),
        repeated("(*LIMIT_MATCH=1)", kManyTimes), repeated("\\", kManyTimes),
        repeated("{1,2}", kManyTimes), repeated("a{1,2}", kManyTimes),
        repeated("(?=a)", 5000), repeated("(?(?=a)b|c)", 2000),
        repeated("(?<=a)", 5000), repeated("a?", 5000) + repeated("a", 5000)));

INSTANTIATE_TEST_SUITE_P(
    Growth, HardToCompile,
    testing::Values(
        "((((a{1000}){1000}){1000}){1000})", "(a{0,65535}){0,65535}",
        "(((a?){0,99}){0,99}){0,99}", "((a|b){0,300}){0,100}",
        "(?:(?:(?:a{0,20}){0,20}){0,20}){0,20}", "(?i)[\\x{100}-\\x{ffff}]",
        "(*UTF8)(?i)[\\x{100}-\\x{10ffff}]{500}", "(*UTF8)\\X{1000}"));

INSTANTIATE_TEST_SUITE_P(Calls, HardToCompile,
                         testing::Values(callingGroups(5), callingGroups(18),
                                         callingGroups(40), callingGroups(400),
                                         "(?:(?1)|(?2))*((?2)|a)((?1)|b)",
                                         "((?1)?(?1)?(?1)?a)+",
                                         "(?R)|(?R)(?R)|a"));

// ---- Calls of groups: to follow them may double the work with each group, but
// does not where they are few, or lead to few groups

class CallsOfGroups : public HostilePattern,
                      public testing::WithParamInterface<LongPattern> {};

TEST_P(CallsOfGroups, AreFollowed) {
  EXPECT_EQ(0, execute(quoted(GetParam().text), "[1,[2,3]]\n").status);
  EXPECT_EQ(Texts{"[1,[2,3]]\n"}, textsOf(session.outputs));
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, CallsOfGroups,
    testing::Values(
        "(\\d)" + repeated("(?1)?", 1000),
        "(?:\\d(?R)?)" + repeated("(?R)?", 500), callingGroups(16) + "\\[",
        "^(?<value>[0-9]+|\\[(?&value)(?:,(?&value))*\\])$",
        "(?(DEFINE)(?<ws>\\s*)(?<num>-?(?:0|[1-9]\\d*)(?:[eE][+-]?\\d+)?)"
        "(?<str>'(?:[^'\\\\]|\\\\.)*')(?<arr>\\[(?&ws)(?:(?&val)(?:,(?&ws)"
        "(?&val))*)?\\])(?<pair>(?&ws)(?&str)(?&ws):(?&val))(?<obj>\\{(?&ws)"
        "(?:(?&pair)(?:,(?&pair))*)?\\})(?<val>(?&ws)(?:(?&num)|(?&str)|(?&arr)"
        "|"
        "(?&obj)|true|false|null)(?&ws)))^(?&val)$"));

TEST_F(HostilePattern, IsRefusedWhenItsCallsTakeForEverToFollow) {
  for (std::size_t const groups : {25U, 40U, 400U}) {
    EXPECT_EQ(-1, execute(quoted(callingGroups(groups)), "a\n").status);
  }
}

// `begin`, and groups of which each calls the next one, in `open` and `close`.
std::string copyingGroups(std::string const& begin, std::size_t count,
                          std::string const& open, std::string const& close) {
  std::string result = begin;
  for (std::size_t i = 2; i <= count; ++i) {
    result += '(' + open + "(?" + std::to_string(i) + ")" + close + ')';
  }
  return result + "(a?)";
}

// Copies of a call are followed one by one.
TEST_F(HostilePattern, IsRefusedWhenItsCopiesTakeForEverToFollow) {
  for (char const* begin : {"(?1)*", "(?<=(?1))", ""}) {
    for (char const* copies : {"{99}", "{99,}", "{0,99}", "{3}{33}", "?{99}"}) {
      for (std::size_t const groups : {6U, isSlowRun() ? 6U : 9U}) {
        EXPECT_EQ(-1, execute(quoted(copyingGroups(begin, groups, "(",
                                                   std::string(")") + copies)),
                              "a\n")
                          .status)
            << begin << copies << groups;
        EXPECT_EQ(
            -1, execute(quoted(copyingGroups(begin, groups, "", copies)), "a\n")
                    .status)
            << begin << copies << groups;
      }
    }
  }
}

// The name R is a name like others.
TEST_F(HostilePattern, IsRefusedWhatsoeverNamesItsGroupsHave) {
  for (char const* name : {"R", "Q", "R1", "P"}) {
    std::string const last = std::string("(?<") + name + ">";
    std::string const call = std::string("(?&") + name + ")";
    std::string pattern = "(?1)*";
    for (int i = 2; i <= 16; ++i) {
      std::string const next = "(?" + std::to_string(i) + ")";
      pattern += '(' + next + next + ')';
    }
    pattern += '(' + call + call + ')' + last;
    for (int i = 18; i <= 34; ++i) {
      std::string const next = "(?" + std::to_string(i) + ")";
      pattern += next + next + ")(";
    }
    EXPECT_EQ(-1, execute(quoted(pattern + "a?)"), "a\n").status) << name;
  }
}

// What is looked up, or folded, one by one.
TEST_F(HostilePattern, IsRefusedWhereMuchIsLookedUp) {
  std::string names;
  for (int i = 0; i < 9999; ++i) names += "(?<n" + std::to_string(i) + ">)";
  EXPECT_EQ(
      -1, execute(quoted(names + repeated("(?&n9998)", 100000)), "a\n").status);
  EXPECT_EQ(
      -1, execute(quoted(repeated("(?1)(?2)", 10900) + "()()"), "a\n").status);
  EXPECT_EQ(-1, execute("filter -i \"(*UTF8)[" +
                            repeated("\\x{100}-\\x{10ffff}", 3000) + "]\"",
                        "a\n")
                    .status);
}

// Many groups make each step take longer.
TEST_F(HostilePattern, OfManyGroupsEndsInTime) {
  for (std::string const& pattern :
       {repeated("()", 5000) + "(?:(?1)|){30}[xy]",
        "(*UTF8)(?:x" + repeated("()", 7900) + ")?(?:|){40}()[yz]"}) {
    EXPECT_TRUE(execute(quoted(pattern), "aaaa\n").status <= 0);
    EXPECT_EQ(Texts{}, textsOf(session.outputs));
  }
}

// A bounded text in quotes.
TEST_F(HostilePattern, IsUsedWhereReferencesAreManyTimesRepeated) {
  EXPECT_EQ(
      0, execute(quoted("(['`])(?:(?!\\1).){0,2000}\\1"), "x'abc'\n").status);
  EXPECT_EQ(Texts{"x'abc'\n"}, textsOf(session.outputs));
}

// Something else that is wrong with a pattern does not make the library follow
// its calls before it is refused.
TEST_F(HostilePattern, IsRefusedWhereMoreIsWrongWithIt) {
  std::string const calls = callingGroups(40);
  std::string const missing = calls.substr(0, calls.size() - 4);
  std::vector<std::string> patterns = {calls};
  if (!isSlowRun()) {
    patterns.insert(patterns.end(),
                    {"(?:" + missing + ")*", "(?<=" + calls + ')'});
  }
  for (std::string const& pattern : patterns) {
    for (char const* end : {")(",       ")[",
                            ")(?#",     ")",
                            "(",        "[",
                            "(?#",      "(*:",
                            "(*X)",     "(?99)",
                            ")(?99)",   "(?&n)",
                            "\\g<n>",   "(?<n>a)(?<n>b)",
                            "(?n)",     "(?xx)",
                            "(?C'",     "(?C256)",
                            "(?[",      "\\",
                            "{2,1}",    "a**",
                            "[z-a]",    "(?<=a+)",
                            "[[:x:]]",  "[[.x.]]",
                            "\\p{x}",   "\\g{99}",
                            "(?(99)a)", "(?(1)a|b|c)"}) {
      EXPECT_EQ(-1, execute(quoted(pattern + end), "a\n").status)
          << pattern.substr(0, 5) << ' ' << end;
    }
  }
}

// Calls behind what looks like a class, and in numbers with many zeros.
TEST_F(HostilePattern, IsRefusedWhereItHidesItsCalls) {
  for (char const* begin : {"(?#[)", "(*:[)", "(?#\\Q)"}) {
    EXPECT_EQ(-1,
              execute(quoted(begin + callingGroups(40) + "]?"), "a\n").status)
        << begin;
  }
  EXPECT_EQ(
      -1,
      execute(quoted(callingGroups(40, std::string(170, '0'))), "a\n").status);
}

// Groups with calls of each other, copied and not.
class RandomCalls {
 public:
  std::string next() {
    constexpr std::array beginnings = {"", "", "(?1)*", "(?<=(?1))",
                                       "(?<=\\1)"};
    std::string pattern = oneOf(beginnings);
    groups_ = below(8) + 1;
    for (std::size_t group = 0; group < groups_; ++group) {
      pattern += '(' + body(group) + ')' + repetition();
    }
    return below(4) == 0 ? "(?:" + pattern + ")*" : pattern;
  }

 private:
  // Mostly with calls of later groups: those of earlier ones may never end, and
  // are refused then.
  std::string body(std::size_t group) {
    std::string result = below(2) == 0 ? "a?" : "";
    for (std::size_t calls = below(4); calls > 0; --calls) {
      std::size_t const first = below(20) == 0 ? 0 : group + 1;
      if (first >= groups_) break;
      std::string const called =
          std::to_string(first + below(groups_ - first) + 1);
      std::string const call =
          below(8) == 0 ? "\\g{" + called + '}' : "(?" + called + ')';
      result += below(4) == 0 ? "(?:" + call + repetition() + ')' : call;
      result += repetition();
    }
    return result + (below(2) == 0 ? "a" : "");
  }

  std::string repetition() {
    constexpr std::array repetitions = {
        "",     "",      "",       "*",    "?",     "{2}",  "{9}",
        "{99}", "{0,3}", "{0,50}", "{3,}", "{1,9}", "?{7}", "{2}{0,4}"};
    return oneOf(repetitions);
  }

  template <typename Texts>
  std::string oneOf(Texts const& texts) {
    return texts[below(texts.size())];
  }

  std::size_t below(std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
  }

  std::mt19937 random_{testSeed()};
  std::size_t groups_ = 0;
};

// Each call is timed.
TEST_F(HostilePattern, WithRandomCallsIsUsedOrRefused) {
  RandomCalls patterns;
  int used = 0;
  int const count = isSlowRun() ? 200 : 2000;
  for (int i = 0; i < count; ++i) {
    std::string const pattern = patterns.next();
    SCOPED_TRACE(pattern);
    used += execute(quoted(pattern), "ab\n").status == 0 ? 1 : 0;
  }
  EXPECT_GT(used, count / 10);
}

}  // namespace
}  // namespace qor_test
