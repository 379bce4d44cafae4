#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <iostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "LineFilter.h"
#include "Pcre2Oracle.h"
#include "PluginTest.h"
#include "Seed.h"
#include "SmallStack.h"

namespace qor_test {
namespace {

using QorCliMatching::LineFilter;
using QorCliMatching::PatternError;

// The processor time that a call over 128 KiB may take, including compilation.
// More under valgrind and with sanitizers.
double const kMaxCall = isSlowRun() ? 8 : 2;  // seconds

// The part of it besides matching lines.
double const kOverhead = kMaxCall - 1;  // seconds

// The injected time budget of a call.
constexpr double kLittleTime = 0.02;  // seconds

constexpr std::size_t kCallSize = std::size_t{128} * 1024;  // bytes
constexpr std::size_t kMiB = std::size_t{1} << 20;

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

// As many copies as fit into `size`.
std::string many(std::string const& text, std::size_t size = 65000) {
  return repeated(text, size / text.size());
}

// As many copies of a line as fit into a call.
std::string callOf(std::string const& line) {
  return repeated(line + '\n', kCallSize / (line.size() + 1));
}

// The start of a long text, for messages.
std::string excerpt(std::string const& text) {
  constexpr std::size_t shown = 50;  // bytes
  if (text.size() <= shown) return text;
  return text.substr(0, shown) + " of " + std::to_string(text.size()) +
         " bytes";
}

// Ends the program when it uses more processor time; 0 cancels the limit.
void limitProcessorTime(double seconds) {
  itimerval timer{};
  timer.it_value.tv_sec = static_cast<time_t>(seconds);
  ASSERT_EQ(0, setitimer(ITIMER_PROF, &timer, nullptr));
}

// The processor time of a call. If the call never ends, ends the program.
class Stopwatch {
 public:
  Stopwatch() { limitProcessorTime(3 * kMaxCall); }

  double stop() {
    double const taken =
        static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC;
    limitProcessorTime(0);
    return taken;
  }

 private:
  std::clock_t start_ = std::clock();
};

struct LongestCall {
  double seconds = 0;
  std::string what;

  void note(double taken, std::string const& pattern) {
    if (taken > seconds) *this = {taken, excerpt(pattern)};
  }
};

class HostilePattern : public PluginTest {
 public:
  static void TearDownTestSuite() {
    std::cout << "longest call so far: " << longest.seconds << " s, "
              << longest.what << "; besides its lines: " << overhead.seconds
              << " s, " << overhead.what << std::endl;
  }

 protected:
  // Through the plug-in, within its time.
  ActionResult execute(std::string const& line, std::string const& input,
                       unsigned actionId = kActionId) {
    session.clear();
    Stopwatch watch;
    ActionResult const result = use(kExecute, actionId, line, input);
    double const taken = watch.stop();
    EXPECT_LT(taken, kMaxCall) << excerpt(line);
    longest.note(taken, line);
    return result;
  }

  // With a budget of `kLittleTime`: compiling, and matching that does not check
  // the clock, stay within their time.
  enum class End { kAnswered, kFailed, kRefused };
  End filter(std::string const& pattern, std::string const& text);

  struct Kept : QorCliMatching::LineSink {
    void selected(std::string_view lines) override { text += lines; }
    void unselected(std::string_view) override {}
    std::string text;
  };
  Kept kept;

 private:
  End filterWithin(double seconds, std::string const& pattern,
                   std::string const& text);

  // Of all test suites so far.
  inline static LongestCall longest;
  inline static LongestCall overhead;
};

HostilePattern::End HostilePattern::filter(std::string const& pattern,
                                           std::string const& text) {
  Stopwatch watch;
  End const end = filterWithin(kLittleTime, pattern, text);
  double const taken = watch.stop() - kLittleTime;
  EXPECT_LT(taken, kOverhead) << excerpt(pattern);
  overhead.note(taken, pattern);
  return end;
}

HostilePattern::End HostilePattern::filterWithin(double seconds,
                                                 std::string const& pattern,
                                                 std::string const& text) {
  kept.text.clear();
  try {
    LineFilter::Settings settings;
    settings.seconds = seconds;
    LineFilter filter(pattern, false, settings);
    try {
      filter.filter(text, false, kept);
      return End::kAnswered;
    } catch (PatternError const&) {
      return End::kFailed;
    }
  } catch (PatternError const&) {
    return End::kRefused;
  }
}

// ---- Sequences of groups and characters that match in several ways

// The repeated part; # is the number of the copy.
struct Form {
  char const* text;
  bool isRegular;
};

std::ostream& operator<<(std::ostream& out, Form const& form) {
  return out << form.text;
}

constexpr Form kForms[] = {
    // Alternatives
    {"(a|a)", true},
    {"(a|)", true},
    {"(|a)", true},
    {"(a|aa)", true},
    {"(aa|a)", true},
    {"((?:a|a))", true},
    {"(?:(a)|a)", true},
    {"(?:(a)|(a))", true},
    {"((a)|(a))", true},
    {"((a|a))", true},
    {"(.|a)", true},
    {"(a|.)", true},
    {"(a|\\w)", true},
    {"(\\w|\\w)", true},
    {"([ab]|a)", true},
    {"(a|[^b])", true},
    {"(a|a|a)", true},
    {"(a|b|a)", true},
    {"(a||a)", true},
    {"(a|a?)", true},
    {"(a|a*)", true},
    {"(a|a){1}", true},
    {"(a|a){1,2}", true},
    {"(a|a)?", true},
    {"(a|a)??", true},
    {"(?:a|a)", true},
    {"(?:a|)", true},
    // Optional parts
    {"a?", true},
    {"a??", true},
    {"a*", true},
    {"a*?", true},
    {".?", true},
    {"\\w?", true},
    {"[ab]?", true},
    {"(a?)", true},
    {"(a?"
     "?)",
     true},  // not a trigraph
    {"(a)?", true},
    {"((a)?)", true},
    {"(?:a?)?", true},
    {"(a*)", true},
    {"(a*?)", true},
    {"(a+)", true},
    {"(a{0,1})", true},
    {"(a{0,2})", true},
    {"(a{1,2})", true},
    // Named
    {"(?<n#>a|a)", true},
    {"(?P<n#>a|a)", true},
    {"(?<n#>a?)", true},
    {"(?'n#'a|a)", false},
    // With options, or numbered alike
    {"(?i:a|a)", false},
    {"(?s:.|a)", false},
    {"(?|(a)|(a))", false},
    // Atomic and possessive
    {"(?>a|a)", false},
    {"(?>a?)", false},
    {"a?+", false},
    {"(a|a)?+", false},
    // Lookaround
    {"(?=a)a?", false},
    {"(?=(a|a))a?", false},
    {"(?!b)(a|a)", false},
    {"(?<!b)(a|a)", false},
    // Conditional
    {"(?(?=a)a|a)", false},
    {"(?(?!b)(a|a)|a)", false},
    // Back reference
    {"(a)\\g{-1}?", false},
    {"(a|a)\\g{-1}?", false},
    {"(a?)\\g{-1}", false},
    {"(?<n#>a|a)\\k<n#>?", false},
};

static_assert(std::size(kForms) == 66);

std::string copiesOf(std::string const& form, std::size_t count) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) {
    for (char const c : form) {
      c == '#' ? result += std::to_string(i) : result += c;
    }
  }
  return result + "[bc]";
}

// Whether PCRE2's interpreter has to try many paths through the pattern.
bool isHard(std::string const& pattern, std::string const& line) {
  constexpr std::uint32_t fewSteps = 1000;
  return !Pcre2Oracle(pattern, false, fewSteps).matches(line);
}

class HostileForm : public HostilePattern,
                    public testing::WithParamInterface<Form> {};

TEST_P(HostileForm, IsAnsweredIfItIsRegular) {
  for (std::size_t const copies : {36U, 60U}) {
    std::string const pattern = copiesOf(GetParam().text, copies);
    ASSERT_TRUE(Pcre2Oracle(pattern, false).isValid());
    std::string const line(copies + 2, 'a');
    if (GetParam().isRegular) {
      EXPECT_TRUE(isHard(pattern, line));
      EXPECT_EQ(0, execute(quoted(pattern), line + '\n' + line + "b\n").status);
      EXPECT_EQ(Texts{line + "b\n"}, textsOf(session.outputs));
    } else {
      EXPECT_NE(End::kRefused, filter(pattern, line + '\n'));
      EXPECT_EQ("", kept.text);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Forms, HostileForm, testing::ValuesIn(kForms));

// ---- Regular patterns with catastrophic backtracking

class Catastrophe : public HostilePattern,
                    public testing::WithParamInterface<char const*> {};

// The y makes PCRE2 try a pattern that requires one.
TEST_P(Catastrophe, IsAnswered) {
  for (std::size_t const length : {40U, 1000U, 32768U, 1U << 20U}) {
    std::string const line = "aay" + std::string(length - 4, 'a') + '!';
    EXPECT_TRUE(length < 1000 || isHard(GetParam(), line)) << length;
    EXPECT_EQ(0, execute(quoted(GetParam()), line + '\n').status) << length;
    EXPECT_EQ(Texts{}, textsOf(session.outputs));
  }
}

INSTANTIATE_TEST_SUITE_P(Patterns, Catastrophe,
                         testing::Values("(a+)+$", "(a|aa)+$", "(\\w+\\s?)+$",
                                         "^(([a-z])+.)+[A-Z]([a-z])+$",
                                         "(?:(?:a*)*)*[bc]$", "a.*a.*a.*y",
                                         ".*.*.*[xz]", "(?:(a+)+$|x)",
                                         "(?:a?){60}a{60}$", "(\\h*a+)+$",
                                         "(a+)+[^\\S]", "(a+)+[\xE4\xF6]"));

// ---- Calls of 128 KiB

// Different random lines of two letters. RE2 takes a third of the call's budget
// for them; a build in which it takes four times as long gets a quarter of
// them.
std::string mixedLines(std::size_t length) {
  std::size_t const size = isSlowRun() ? kCallSize / 4 : kCallSize;
  std::mt19937 random(7);
  std::string text;
  do {
    for (std::size_t i = 0; i < length; ++i) {
      text += random() % 2 == 0 ? 'a' : 'b';
    }
    text += '\n';
  } while (text.size() + length < size);
  return text;
}

// The text is generated on demand, since every test run creates all rows.
struct WorstCall {
  std::string pattern;
  std::string line;       // repeated; empty: mixed lines
  std::size_t mixed = 0;  // bytes of each mixed line

  std::string text() const {
    return mixed == 0 ? callOf(line) : mixedLines(mixed);
  }
};

std::ostream& operator<<(std::ostream& out, WorstCall const& call) {
  return out << excerpt(call.pattern) << " on lines of "
             << (call.mixed == 0 ? call.line.size() : call.mixed) << " bytes";
}

class RegularCall : public HostilePattern,
                    public testing::WithParamInterface<WorstCall> {};

TEST_P(RegularCall, IsAnswered) {
  EXPECT_EQ(0, execute(quoted(GetParam().pattern), GetParam().text()).status);
  EXPECT_EQ(Texts{}, textsOf(session.outputs));
}

std::vector<WorstCall> regularCalls() {
  std::vector<WorstCall> calls = {
      {"^(a+)+$", std::string(23, 'a') + '!'},
      {"(a|a)(a|a)(a|a)(a|a)[xy]", std::string(60, 'a')},
      {"a.*a.*a.*[xy]", std::string(1000, 'a')},
      {"(.{1,9}x?){1,3}[yz]", std::string(100, 'a')},
      {"[^x]*[xX]y", std::string(16000, 'a') + 'y'},
      {"(a|b|ab){1,99}[de]", repeated("ab", 500)},
      {"a.{0,500}b.{0,500}[;!]", repeated("ab", 500)},
      {"(?:[0-9a-f]{1,4}:){1,30}(?:[0-9a-f]{1,4}:?){0,30}[/%]",
       repeated("ab:", 333)}};
  for (std::size_t const length : {90U, 140U, 200U}) {
    calls.push_back({"a.*a.*[xy]", std::string(length, 'a')});
    calls.push_back({".*.*.*[xy]", std::string(length, 'a')});
  }
  for (char const* pattern :
       {"[ab]*a[ab]{300}[xy]", "(?:[ab]{1,30}x?){1,30}[yz]",
        "(?:[ab]{0,99}){0,9}[xy]", "(a?){300}a{300}[xy]", "(?:a*b*){200}[xy]",
        "(?:a|b|ab|ba|aab|bba){1,80}[xy]"}) {
    calls.push_back({pattern, "", 500});
  }
  return calls;
}

INSTANTIATE_TEST_SUITE_P(Patterns, RegularCall,
                         testing::ValuesIn(regularCalls()));

// With a time limit.
class TimedCall : public HostilePattern,
                  public testing::WithParamInterface<WorstCall> {};

TEST_P(TimedCall, IsAnsweredOrFailsInTime) {
  EXPECT_NE(End::kRefused, filter(GetParam().pattern, GetParam().text()));
  EXPECT_EQ("", kept.text);
}

std::string const kTooLargeForCallouts = "(?=((abcdefgh){99}){9})|";

// A class of non-ASCII characters that are not consecutive: a character of the
// line is compared with each.
std::string largeClass(std::size_t size) {
  std::string result = "(*UTF)[^";
  for (unsigned c = 0x1000; size-- != 0; c += 2) {
    result += {static_cast<char>(0xE0 | c >> 12),
               static_cast<char>(0x80 | (c >> 6 & 0x3F)),
               static_cast<char>(0x80 | (c & 0x3F))};
  }
  return result + ']';
}

std::vector<WorstCall> timedCalls() {
  std::vector<WorstCall> calls;
  for (char const* pattern : {"(a(?1)?a)[bc]",
                              "(?=(a+)+$)a",
                              "(a*)*\\1[xy]",
                              "^(a+)+\\1[bc]",
                              "(*UTF)(a+)+$",
                              "(*UTF).*.*.*[xy]",
                              "(*UTF)(a|aa)+$",
                              "(a+)\\1+$",
                              "(.+)(.+)\\1\\2[yz]",
                              "(?i)(.+)\\1+[yz]",
                              "a[^x]*+[yz]",
                              "(?:a|b)*+[yz]",
                              "(a*+)++[yz]",
                              "a(?>.*)[yz]",
                              "(?=a.*[yz])b?",
                              "(?=.*[bc])a",
                              "(a(?1)?)+$|y",
                              "(a(?1)?b?)+$",
                              "(?:a(?R)?)+$|y",
                              "(a|a(?1))+y?$",
                              "(?<n>a(?&n)?)+$",
                              "(a\\g<1>?)*+$",
                              "(*NO_START_OPT)(a|a)+$",
                              "(*UTF)(*LIMIT_MATCH=4000000000)(a+)+$",
                              "(a|)+$x?",
                              "\\X*[yz]"}) {
    for (std::size_t const length : {24U, 2000U, 131070U}) {
      calls.push_back({pattern, std::string(length, 'a') + '!'});
    }
  }
  for (char const* tail : {"(a+)+$", "(|){40}x", "(a?){40}x"}) {
    for (std::size_t const length : {0U, 8U, 24U, 2000U}) {
      calls.push_back(
          {kTooLargeForCallouts + tail, std::string(length, 'a') + '!'});
    }
  }
  for (char const* items : {"a?", "a*", ".*", "\\X*"}) {
    calls.push_back({repeated(items, 16000) + "[yz]", std::string(24, 'a')});
  }
  // Large programs of RE2, whose states exceed its memory.
  for (char const* pattern :
       {"(?:[ab]{1,20}[ac]?){1,20}[xy]",
        "[ab]*a(?:[ab]{30}|[ab]{37}|[ab]{41}|[ab]{43}|[ab]{47}|[ab]{53}){2}"
        "[xy]"}) {
    calls.push_back({pattern, "", 500});
    calls.push_back({pattern, "", 130000});
  }
  for (std::size_t const size : {300U, 1200U, 5000U, 15000U}) {
    for (char const* tail : {"*[yz]", "*+[yz]", "{2,}?[yz]"}) {
      calls.push_back({largeClass(size) + tail, repeated("\xC4\x80", 65000)});
    }
  }
  for (std::size_t const size : {1000U, 5000U, 21000U}) {
    calls.push_back(
        {"[^" + repeated("\\pL", size) + "]*[yz]", std::string(131070, '1')});
  }
  // Groups make each step slower.
  for (std::string const& pattern :
       {repeated("()", 5000) + "(?:(?1)|){30}[xy]",
        "(*UTF8)(?:x" + repeated("()", 7900) + ")?(?:|){40}()[yz]",
        "(*UTF)" + repeated("(a?)", 1000) + "(a+)+$",
        repeated("(x)?", 3000) + "(?:|){40}()[yz]"}) {
    calls.push_back({pattern, "aaaa"});
  }
  return calls;
}

INSTANTIATE_TEST_SUITE_P(Patterns, TimedCall, testing::ValuesIn(timedCalls()));

// Entering groups takes time, too.
TEST_F(HostilePattern, OfNestedNamedGroupsIsAnswered) {
  std::string pattern;
  int names = 0;
  for (int copy = 0; copy < 9; ++copy) {
    for (int depth = 0; depth < 27; ++depth) {
      pattern += "(?<n" + std::to_string(names++) + '>';
    }
    pattern += ".|a" + repeated(")", 27);
  }
  EXPECT_EQ(
      0,
      execute(quoted(pattern + "[bc]"), callOf(std::string(1000, 'a'))).status);
  EXPECT_EQ(Texts{}, textsOf(session.outputs));
}

// ---- Long patterns

TEST_F(HostilePattern, OfManyCharactersEndsInTime) {
  for (std::string const& pattern :
       {repeated(".", 30000) + "[yz]", repeated("\\w", 30000) + "[yz]",
        std::string(30000, 'a') + 'b', std::string(30000, 'a') + "[bc]"}) {
    EXPECT_NE(End::kRefused, filter(pattern, std::string(kMiB, 'a') + '\n'));
    EXPECT_EQ("", kept.text);
  }
}

long peakMemory() {
  rusage usage{};
  EXPECT_EQ(0, getrusage(RUSAGE_SELF, &usage));
  return usage.ru_maxrss;  // KiB
}

// For one pattern. AddressSanitizer retains freed memory.
constexpr long kMaxMemory = (kAddressSanitizer ? 256 : 32) * 1024;  // KiB

// RE2 would expand them.
TEST_F(HostilePattern, OfManyCountsTakesLittleMemory) {
  long const before = peakMemory();
  EXPECT_NE(End::kRefused, filter(many("a{1,999}", 40000) + "[bc]", "ab\n"));
  EXPECT_LE(peakMemory(), before + kMaxMemory);
}

TEST_F(HostilePattern, OfMoreThan64KiBIsRejectedAtOnce) {
  std::string const fitting = "a(?#" + std::string(64 * 1024 - 5, 'b') + ')';
  EXPECT_EQ(0, execute(quoted(fitting), "a\n").status);
  EXPECT_EQ(-1, execute(quoted('a' + fitting), "a\n").status);
  std::string const pattern = repeated("(a)", 3500000);
  long const before = peakMemory();
  EXPECT_EQ(End::kRefused, filter(pattern, "a\n"));
  EXPECT_LE(peakMemory(), before + kMaxMemory);
}

// ---- A call that times out, with the default time limit

constexpr char kTimedCatastrophe[] = "(?=(a+)+$)a|[12]";
std::string const kBadLine = std::string(60, 'a') + "!\n";

TEST_F(HostilePattern, ClearsTheStateOfAllActionsOnTimeout) {
  for (unsigned const actionId : {kActionId, kOtherActionId}) {
    EXPECT_EQ(0, execute("filter -b 1 M", "x\n", actionId).status);
  }
  ActionResult const result =
      execute(quoted(kTimedCatastrophe), "1a\n2a\n" + kBadLine + "1b\n");
  EXPECT_EQ(-1, result.status);
  EXPECT_EQ(1U, result.commandMatchCount);
  EXPECT_EQ(Texts{"1a\n"}, textsOf(session.outputs));
  for (unsigned const actionId : {kActionId, kOtherActionId}) {
    EXPECT_EQ(0, execute("filter -b 1 M", "M\n", actionId).status);
    EXPECT_EQ(Texts{"M\n"}, textsOf(session.outputs));
  }
}

TEST_F(HostilePattern, PushesTheLinesBeforeTheFailure) {
  EXPECT_EQ(End::kFailed,
            filter(kTimedCatastrophe, "1a\nb\n2a\n" + kBadLine + "1b\n"));
  EXPECT_EQ("1a\n2a\n", kept.text);
}

TEST_F(HostilePattern, HasOneBudgetForAllLines) {
  std::string const slow = std::string(16, 'a') + "!\n";
  EXPECT_EQ(End::kAnswered, filter("(?=(a+)+$)a", slow));
  EXPECT_EQ(End::kFailed, filter("(?=(a+)+$)a", callOf(slow)));
}

TEST_F(HostilePattern, KeepsTheStateOfOthersOnSuccess) {
  EXPECT_EQ(0, execute("filter -b 1 M", "x\n", kOtherActionId).status);
  EXPECT_EQ(0, execute(quoted(kTimedCatastrophe), "1a\nb\n2a\n").status);
  EXPECT_EQ((Texts{"1a\n", "2a\n"}), textsOf(session.outputs));
  EXPECT_EQ(0, execute("filter -b 1 M", "M\n", kOtherActionId).status);
  EXPECT_EQ((Texts{"x\n", "M\n"}), textsOf(session.outputs));
}

// ---- Patterns that are hard to compile

// A pattern too long to be printed whole.
struct LongPattern {
  LongPattern(std::string const& pattern) : text(pattern) {}
  LongPattern(char const* pattern) : text(pattern) {}

  std::string text;
};

std::ostream& operator<<(std::ostream& out, LongPattern const& pattern) {
  return out << excerpt(pattern.text);
}

std::string callOfGroup(std::size_t number) {
  return "(?" + std::to_string(number) + ')';
}

// Groups that each call the next one twice.
std::string callingGroups(std::size_t count) {
  std::string result;
  for (std::size_t i = 2; i <= count + 1; ++i) {
    result += "(a?" + repeated(callOfGroup(i), 2) + ')';
  }
  return result + "(a?)";
}

class HardToCompile : public HostilePattern,
                      public testing::WithParamInterface<LongPattern> {};

TEST_P(HardToCompile, IsRejectedOnlyByPcre2) {
  bool const isValid = GetParam().text.size() <= 64 * 1024 &&
                       Pcre2Oracle(GetParam().text, false).isValid();
  EXPECT_EQ(isValid, filter(GetParam().text, "ab\n") != End::kRefused);
}

// Some copies of a text, and many, since a pattern too large for callouts is
// not analysed.
std::vector<LongPattern> manyOrSome(std::vector<char const*> const& texts) {
  std::vector<LongPattern> patterns;
  for (char const* text : texts) {
    for (std::size_t const size : {65000U, 16000U, 4000U, 1000U}) {
      patterns.emplace_back(many(text, size));
    }
  }
  return patterns;
}

INSTANTIATE_TEST_SUITE_P(Parts, HardToCompile,
                         testing::ValuesIn(manyOrSome(
                             {"(",          "(?:",         "[",
                              "[[:alpha:]", "[^]",         "a|",
                              "()",         "(a)",         "(?R)",
                              "(?(1)",      "(?(?=a)",     "(?#",
                              "\\Q",        "(?|",         "(?i)",
                              "(*UTF8)",    "\\",          "{1,2}",
                              "(?=a)",      "(?(?=a)b|c)", "(?<=a)",
                              "\\R",        "\\X",         "(?<=a|b|cc)",
                              "\\R*",       ".{1000}",     "[ab]{0,99}",
                              "a{0,65535}", "a{1,2}",      "a{1,9}",
                              "a{1,999}",   "(a|b){1,3}",  "(a{1,9}){1,9}",
                              "\\p{Lu}",    "(?C1)",       "(*LIMIT_MATCH=1)",
                              "\\N{U+41}",  "(?<=(?<=a)b)"})));

INSTANTIATE_TEST_SUITE_P(
    References, HardToCompile,
    testing::Values("(a)" + many("\\1"), "(a)" + many("(?1)"),
                    "(?<n>a)" + many("(?P>n)"), "(?<n>a)" + many("\\k<n>"),
                    repeated("a?", 5000) + repeated("a", 5000)));

INSTANTIATE_TEST_SUITE_P(
    Growth, HardToCompile,
    testing::Values(
        "((((a{1000}){1000}){1000}){1000})", "(a{0,65535}){0,65535}",
        "(((a?){0,99}){0,99}){0,99}", "((a|b){0,300}){0,100}",
        "(?:(?:(?:a{0,20}){0,20}){0,20}){0,20}", "(?i)[\\x{100}-\\x{ffff}]",
        "(*UTF8)(?i)[\\x{100}-\\x{10ffff}]{500}", "(*UTF8)\\X{1000}",
        repeated("(b|)", 3600) + 'b', "a*" + repeated("(|b)", 3600) + 'x'));

// Caseless classes look up each character, and take so long that the oracle is
// not consulted.
TEST_F(HostilePattern, OfManyCaselessRangesEndsInTime) {
  std::string const ranges = '[' + many("\\x{100}-\\x{10ffff}") + ']';
  for (char const* begin : {"(*UTF)", "(*UTF)(?i)"}) {
    filter(begin + ranges, "ab\n");
    EXPECT_EQ("", kept.text);
  }
}

// Each name is compared with all earlier ones, and each call with all groups.
std::string names(std::size_t count) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) {
    result += "(?<n" + std::to_string(i) + ">)";
  }
  return result;
}

INSTANTIATE_TEST_SUITE_P(
    Calls, HardToCompile,
    testing::Values(callingGroups(5), callingGroups(18), callingGroups(40),
                    callingGroups(400), callingGroups(2800),
                    "(?<=" + callingGroups(9) + ')',
                    "(?:" + callingGroups(40) + ")*",
                    "(?:(?1)|(?2))*((?2)|a)((?1)|b)", "((?1)?(?1)?(?1)?a)+",
                    "(?R)|(?R)(?R)|a", names(7000),
                    names(3000) + repeated("(?&n2999)", 3000),
                    names(3000) + repeated("\\k{n2999}", 3000),
                    repeated("(?1)(?2)", 5000) + "()()",
                    repeated("()", 6000) + repeated("(?6000)(?5999)", 3500)));

INSTANTIATE_TEST_SUITE_P(
    Copies, HardToCompile,
    testing::Values("(?1)*((?2)){99}((?3)){99}((?4)){99}(a?)",
                    "(?<=(?1))((?2)){0,99}((?3)){0,99}(a?)",
                    "(?1)*((?2){99,})((?3){99,})(a?)",
                    "((?2){3}{33})((?3){3}{33})((?4){3}{33})(a?)"));

// Words such as in a filter for a list of devices.
TEST_F(HostilePattern, OfManyWordsEndsInTime) {
  std::string words;
  std::mt19937 random(1);
  for (int word = 0; word < 4000; ++word) {
    for (int letter = 0; letter < 5; ++letter) {
      words += static_cast<char>('c' + random() % 24);
    }
    words += '|';
  }
  EXPECT_NE(End::kRefused, filter(words + "ab", callOf("aabababa")));
  EXPECT_NE(End::kRefused, filter("(?:" + words + "ab)x", mixedLines(100)));
  EXPECT_EQ("", kept.text);
}

// ---- Subroutine calls, which may double the work with each group, unless they
// reach few groups

class SubroutineCalls : public HostilePattern,
                        public testing::WithParamInterface<LongPattern> {};

TEST_P(SubroutineCalls, AreAnswered) {
  EXPECT_EQ(0, execute(quoted(GetParam().text), "[1,[2,3]]\n").status);
  EXPECT_EQ(Texts{"[1,[2,3]]\n"}, textsOf(session.outputs));
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, SubroutineCalls,
    testing::Values(
        "(\\d)" + repeated("(?1)?", 1000),
        "(?:\\d(?R)?)" + repeated("(?R)?", 500), callingGroups(14) + "\\[",
        "^(?<value>[0-9]+|\\[(?&value)(?:,(?&value))*\\])$",
        "(?(DEFINE)(?<ws>\\s*)(?<num>-?(?:0|[1-9]\\d*)(?:[eE][+-]?\\d+)?)"
        "(?<str>'(?:[^'\\\\]|\\\\.)*')(?<arr>\\[(?&ws)(?:(?&val)(?:,(?&ws)"
        "(?&val))*)?\\])(?<pair>(?&ws)(?&str)(?&ws):(?&val))(?<obj>\\{(?&ws)"
        "(?:(?&pair)(?:,(?&pair))*)?\\})(?<val>(?&ws)(?:(?&num)|(?&str)|(?&arr)"
        "|(?&obj)|true|false|null)(?&ws)))^(?&val)$"));

// Bounded text in quotes.
TEST_F(HostilePattern, IsAcceptedWithManyRepeatedReferences) {
  EXPECT_EQ(
      0, execute(quoted("(['`])(?:(?!\\1).){0,2000}\\1"), "x'abc'\n").status);
  EXPECT_EQ(Texts{"x'abc'\n"}, textsOf(session.outputs));
}

// Groups that call each other, copied or not.
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
  // Mostly calls of later groups: calls of earlier ones may recurse endlessly,
  // and are then rejected.
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

TEST_F(HostilePattern, WithRandomCallsIsRejectedOnlyByPcre2) {
  RandomCalls patterns;
  int const count = isSlowRun() ? 50 : 500;
  for (int i = 0; i < count; ++i) {
    std::string const pattern = patterns.next();
    SCOPED_TRACE(pattern);
    EXPECT_EQ(Pcre2Oracle(pattern, false).isValid(),
              filter(pattern, "ab\n") != End::kRefused);
  }
}

}  // namespace
}  // namespace qor_test
