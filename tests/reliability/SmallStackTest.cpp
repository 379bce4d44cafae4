#include <gtest/gtest.h>
#include <link.h>

#include <algorithm>
#include <ctime>
#include <iterator>
#include <optional>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "EverydayPatterns.h"
#include "Pcre2Oracle.h"
#include "PluginTest.h"
#include "RandomPattern.h"
#include "Seed.h"
#include "SmallStack.h"

namespace qor_test {
namespace {

constexpr std::size_t kKiB = 1024;
constexpr std::size_t kMiB = 1024 * kKiB;
constexpr std::size_t kLongLine = 256 * kKiB;  // bytes
constexpr unsigned kActionId = 3;
constexpr char kNotFound[] = "ERROR: Command not found\n";

using Texts = std::vector<std::string>;

// ---- Stacks

struct StackKind {
  char const* name;
  void (*run)(std::size_t size, std::function<void()> const& work);
  std::size_t size;  // bytes
};

std::ostream& operator<<(std::ostream& out, StackKind const& stack) {
  return out << stack.name;
}

constexpr StackKind kLargeStack = {"a thread's 8 MiB", runOnStackOf, 8 * kMiB};

// The minimum of a thread. On other stacks, AddressSanitizer reports false
// errors after exceptions.
constexpr StackKind kSmallStacks[] = {
    {"a thread's 64 KiB", runOnStackOf, 64 * kKiB},
    {"a thread's 16 KiB", runOnStackOf, 16 * kKiB},
#if !QOR_TEST_ADDRESS_SANITIZER
    {"a coroutine's 16 KiB", runOnCoroutineOf, 16 * kKiB},
    {"a signal stack's 16 KiB", runInSignalHandlerOn, 16 * kKiB},
#endif
};

std::string repeated(std::string const& text, std::size_t times) {
  std::string result;
  result.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

std::string number(std::size_t n) { return std::to_string(n); }

// With the memory limit of the filter.
Pcre2Oracle oracleOf(std::string const& pattern, bool ignoreCase) {
  return {pattern, ignoreCase, 10'000'000, 128 * 1024};
}

// The command line.
std::string filterFor(std::string const& pattern, bool ignoreCase = false) {
  std::string line = ignoreCase ? "filter -i \"" : "filter \"";
  for (char const c : pattern) {
    if (c == '"') line += '\\';
    line += c;
  }
  return line + '"';
}

// The outcome of an action for the engine.
struct Answer {
  std::int32_t status;
  unsigned matches;
  Texts outputs;
  Texts candidates;
};

bool operator==(Answer const& a, Answer const& b) {
  return std::tie(a.status, a.matches, a.outputs, a.candidates) ==
         std::tie(b.status, b.matches, b.outputs, b.candidates);
}

std::ostream& operator<<(std::ostream& out, Answer const& answer) {
  out << "status " << answer.status << ", matches " << answer.matches;
  for (std::string const& text : answer.outputs) {
    out << ", output of " << text.size() << " bytes \"" << text.substr(0, 60);
  }
  for (std::string const& text : answer.candidates) out << ", " << text;
  return out;
}

Answer const kRefusal{-1, 1, {}, {}};

class SmallStack : public PluginTest {
 protected:
  // A call on a small stack must not reuse a pattern compiled on a large one.
  void compileAnotherPattern() { use(kExecute, kActionId, "filter z", "w\n"); }

  Answer ask(StackKind const& stack, unsigned action, std::string const& line,
             std::string const& input = "") {
    Answer answer{};
    stack.run(stack.size, [&] { answer = askHere(action, line, input); });
    return answer;
  }

  // On the caller's stack.
  Answer askHere(unsigned action, std::string const& line,
                 std::string const& input) {
    session.clear();
    ActionResult const result = use(action, kActionId, line, input);
    Answer answer{
        result.status, result.commandMatchCount, textsOf(session.outputs), {}};
    for (CandidateCall const& candidate : session.candidates) {
      answer.candidates.push_back(candidate.completion);
    }
    return answer;
  }

  // On each stack, a call agrees with PCRE2's interpreter on `line` or, if that
  // fails, with the call on every other stack.
  void expectSameOnAllStacks(std::string const& pattern,
                             std::string const& line) {
    Pcre2Oracle const oracle = oracleOf(pattern, false);
    Answer expected = kRefusal;
    if (oracle.isValid()) {
      std::optional<bool> const answer = oracle.matches(line);
      if (!answer) {
        expected = ask(kLargeStack, kExecute, filterFor(pattern), line + '\n');
      } else {
        expected = {0, 1, {}, {}};
        if (*answer) expected.outputs = {line + '\n'};
      }
    }
    expectOnAllStacks(expected, pattern, line + '\n');
  }

  void expectOnAllStacks(Answer const& expected, std::string const& pattern,
                         std::string const& input) {
    std::string const line = filterFor(pattern);
    EXPECT_EQ(expected, ask(kLargeStack, kExecute, line, input));
    for (StackKind const& stack : kSmallStacks) {
      compileAnotherPattern();
      EXPECT_EQ(expected, ask(stack, kExecute, line, input))
          << pattern.substr(0, 60) << " of " << pattern.size() << " bytes on "
          << stack;
    }
  }
};

// ---- Everyday patterns

// The everyday lines that the interpreter selects.
struct Expectation {
  std::string pattern;
  bool ignoreCase;
  Texts selected;
};

std::vector<Expectation> const& expectations() {
  static std::vector<Expectation> const all = [] {
    std::vector<Expectation> result;
    for (std::string const& pattern : everydayPatterns()) {
      for (bool const ignoreCase : {false, true}) {
        Pcre2Oracle const oracle = oracleOf(pattern, ignoreCase);
        result.push_back({pattern, ignoreCase, {}});
        for (std::string const& line : everydayLines()) {
          if (oracle.matches({line.data(), line.size() - 1}) == true) {
            result.back().selected.push_back(line);
          }
        }
      }
    }
    return result;
  }();
  return all;
}

class EverydayPattern : public SmallStack,
                        public testing::WithParamInterface<StackKind> {};

// Adjacent lines are one text.
std::string joined(Texts const& texts) {
  std::string result;
  for (std::string const& text : texts) result += text;
  return result;
}

TEST_P(EverydayPattern, AgreesWithTheInterpreter) {
  std::string const log = joined(everydayLines());
  std::vector<Answer> answers;
  for (Expectation const& expected : expectations()) {
    std::string const line = filterFor(expected.pattern, expected.ignoreCase);
    answers.push_back(ask(GetParam(), kExecute, line, log));
  }
  for (std::size_t i = 0; i < answers.size(); ++i) {
    Expectation const& expected = expectations()[i];
    EXPECT_EQ(0, answers[i].status) << expected.pattern;
    EXPECT_EQ(joined(expected.selected), joined(answers[i].outputs))
        << expected.pattern << (expected.ignoreCase ? " -i" : "");
  }
}

INSTANTIATE_TEST_SUITE_P(LargeStack, EverydayPattern,
                         testing::Values(kLargeStack));
INSTANTIATE_TEST_SUITE_P(SmallStacks, EverydayPattern,
                         testing::ValuesIn(kSmallStacks));

// Otherwise the comparison would prove little.
TEST(EverydayPatterns, AreManyAndMatchSomeLines) {
  Texts const patterns = everydayPatterns();
  EXPECT_LE(300U,
            std::set<std::string>(patterns.begin(), patterns.end()).size());
  EXPECT_EQ(100U, everydayLines().size());
  auto const isSelective = [](Expectation const& expected) {
    return !expected.selected.empty() && expected.selected.size() < 100;
  };
  EXPECT_LE(400, std::count_if(expectations().begin(), expectations().end(),
                               isSelective));
  for (std::string const& pattern : patterns) {
    EXPECT_TRUE(oracleOf(pattern, false).isValid()) << pattern;
  }
}

// ---- Command lines

struct CommandLine {
  char const* name;
  std::string line;
  Answer executed;  // over the input "w\n"
};

std::ostream& operator<<(std::ostream& out, CommandLine const& line) {
  return out << line.name;
}

std::string invalidValue(std::string const& value) {
  constexpr std::size_t maxText = 1999;  // bytes
  return ("ERROR: Invalid value '" + value).substr(0, maxText);
}

class SmallStackCommandLine : public SmallStack,
                              public testing::WithParamInterface<CommandLine> {
};

TEST_P(SmallStackCommandLine, IsExecuted) {
  for (StackKind const& stack : kSmallStacks) {
    EXPECT_EQ(GetParam().executed,
              ask(stack, kExecute, GetParam().line, "w\n"));
  }
}

TEST_P(SmallStackCommandLine, IsCompletedAsOnALargeStack) {
  for (unsigned const action : {kComplete, kHelp}) {
    Answer const expected = ask(kLargeStack, action, GetParam().line);
    for (StackKind const& stack : kSmallStacks) {
      EXPECT_EQ(expected, ask(stack, action, GetParam().line));
    }
  }
}

// Patterns too large for PCRE2.
INSTANTIATE_TEST_SUITE_P(
    LongLines, SmallStackCommandLine,
    testing::Values(
        CommandLine{"one quoted text",
                    "filter \"" + std::string(kLongLine, 'w') + '"',
                    {-1, 1, {}, {}}},
        CommandLine{
            "a quoted text for a number",
            "filter -a \"" + std::string(kLongLine, '1') + "\" w",
            {-1, 1, {invalidValue('"' + std::string(kLongLine, '1'))}, {}}},
        CommandLine{"a number",
                    "filter -a " + std::string(kLongLine, '1') + " w",
                    {0, 1, {"w\n"}, {}}},
        CommandLine{
            "an open quote", '"' + std::string(kLongLine, ' '), {0, 0, {}, {}}},
        CommandLine{"commas", std::string(kLongLine, ','), {0, 0, {}, {}}},
        CommandLine{"blanks", std::string(kLongLine, ' '), {0, 0, {}, {}}},
        CommandLine{"blanks between words",
                    "filter" + std::string(kLongLine, ' ') + "w",
                    {0, 1, {"w\n"}, {}}},
        CommandLine{"blanks between commas",
                    repeated(" , ", kLongLine / 3),
                    {0, 0, {}, {}}},
        CommandLine{
            "brackets", repeated(" [ ] ", kLongLine / 5), {0, 0, {}, {}}},
        CommandLine{"quotes", std::string(kLongLine, '"'), {-1, 0, {}, {}}},
        CommandLine{
            "quoted words", repeated("\"w\" ", kLongLine / 4), {0, 0, {}, {}}},
        CommandLine{
            "escaped quotes", repeated("\\\"", kLongLine / 2), {-1, 0, {}, {}}},
        CommandLine{"a text of escaped quotes",
                    "filter \"" + repeated("\\\"", kLongLine / 2) + '"',
                    {-1, 1, {}, {}}},
        CommandLine{"patterns",
                    "filter" + repeated(" w", 30000),
                    {-1, 1, {kNotFound}, {}}},
        CommandLine{"options",
                    "filter" + repeated(" -i", 30000) + " W",
                    {0, 1, {"w\n"}, {}}},
        CommandLine{
            "words of no command", repeated("w ", 30000), {0, 0, {}, {}}}));

// ---- Lines

struct LongLine {
  char const* pattern;
  std::string line;
  bool matches;
};

std::ostream& operator<<(std::ostream& out, LongLine const& longLine) {
  return out << longLine.pattern;
}

class SmallStackLine : public SmallStack,
                       public testing::WithParamInterface<LongLine> {};

TEST_P(SmallStackLine, IsDecided) {
  std::string const line = GetParam().line + '\n';
  Answer expected{0, 1, {}, {}};
  if (GetParam().matches) expected.outputs = {line};
  expectOnAllStacks(expected, GetParam().pattern, line);
}

std::string alternating(std::string const& end) {
  return repeated("ab", kLongLine / 2) + end;
}

// For matchers that need memory for each byte.
std::string const someHundredKiB = repeated("ab", 100 * kKiB) + 'c';

INSTANTIATE_TEST_SUITE_P(
    LongLines, SmallStackLine,
    testing::Values(LongLine{"(a|b)*c", alternating("c"), true},
                    LongLine{"^(a|b)*x", alternating("c"), false},
                    LongLine{"((a)(b))*c", alternating("c"), true},
                    LongLine{"^(?:(a)|(b))+c$", alternating("c"), true},
                    LongLine{"((?:a|ab)b?)*c", alternating("c"), true},
                    LongLine{"(.*)(.*)(.*)c", alternating("c"), true},
                    LongLine{"^(.)(.).*\\1\\2c$", alternating("c"), true},
                    LongLine{"^(..)\\1*c", alternating("c"), true},
                    LongLine{"^(..)\\1*x", alternating("c"), false},
                    LongLine{"^(?:(?=a)a|b)*?c", someHundredKiB, true},
                    LongLine{"(?>(?:ab)*)c", someHundredKiB, true},
                    LongLine{"[^c]*c[^c]*$", alternating("c"), true}));

// Recursion over a line needs memory for each level.
TEST_F(SmallStack, IsEnoughForRecursivePatterns) {
  for (std::size_t const depth : {10U, 1000U, 20000U}) {
    std::string const line = std::string(depth, 'a') + std::string(depth, 'b');
    for (char const* pattern : {"^(a(?1)?b)$", "a(?R)?b", "^(?P<n>a(?P>n)?b)$",
                                "(*UTF8)^(a(?1)?b)$"}) {
      expectOnAllStacks({0, 1, {line + '\n'}, {}}, pattern, line + '\n');
    }
  }
}

// ---- Nested patterns

// A group that is wrapped around a pattern repeatedly.
struct Nest {
  char const* open;
  char const* close;
};

std::ostream& operator<<(std::ostream& out, Nest const& nest) {
  return out << nest.open << nest.close;
}

class SmallStackNest : public SmallStack,
                       public testing::WithParamInterface<Nest> {};

// PCRE2 accepts at most 250 levels.
TEST_P(SmallStackNest, IsAnsweredAlike) {
  for (std::size_t const depth : {1U, 60U, 249U, 250U, 251U}) {
    expectSameOnAllStacks(repeated(GetParam().open, depth) + 'a' +
                              repeated(GetParam().close, depth),
                          "ab");
  }
}

INSTANTIATE_TEST_SUITE_P(
    Groups, SmallStackNest,
    testing::Values(Nest{"(", ")"}, Nest{"(?:", ")"}, Nest{"(?:", ")*"},
                    Nest{"(", ")*"}, Nest{"(", ")+?"}, Nest{"(", "|b)"},
                    Nest{"(b|", ")"}, Nest{"(?:b|", "|c)?"}, Nest{"(?>", ")"},
                    Nest{"(?i:", ")"}, Nest{"(?=", ")"}, Nest{"(?=", ")."},
                    Nest{"(?!b", ")|a"}, Nest{"(?<=", ")|a"}, Nest{"(?|", ")"},
                    Nest{"(?(?=a)", "|b)"}, Nest{"(a?", ")"}, Nest{"(", "b?)"},
                    Nest{"(", ")\\b"}, Nest{"(", ""}, Nest{"[", "]"},
                    Nest{"[(", ")]"}, Nest{"", ")"}, Nest{"(?#", ")"},
                    Nest{"\\Q(", "\\E"}, Nest{"(?#[)(", "]?)"},
                    Nest{"(*:[)(", "]?)"}, Nest{"(?C1)(", ")"},
                    Nest{"(?x:#)\n", ")"}, Nest{"[\\Q]\\E]?(", ")"},
                    Nest{"(", ")(?R)?"}, Nest{"(?:(?R)?", ")"}));

// ---- Random patterns

constexpr Nest kNests[] = {{"(", ")"},       {"(?:", ")*"},  {"(?>", "|b)"},
                           {"(?=", ")"},     {"(?!", ")"},   {"(?|", ")?"},
                           {"(?(?=a)", ")"}, {"(", ")\\1?"}, {"(?i:a?", ")"},
                           {"(?<!", ")"},    {"(a|", "b)+"}, {"(?:", "){0,2}"}};

std::string randomlyNested(RandomPattern& source) {
  std::string pattern = source.pattern();
  std::size_t const maxDepth = source.below(100);
  for (std::size_t depth = 0; depth < maxDepth; ++depth) {
    Nest const& nest = kNests[source.below(std::size(kNests))];
    pattern = nest.open + pattern + nest.close;
  }
  return pattern;
}

// Of a call's second.
constexpr std::clock_t kLittleTime = CLOCKS_PER_SEC / 5;

TEST_F(SmallStack, IsEnoughForRandomPatterns) {
  std::mt19937 random(testSeed());
  RandomPattern source(random);
  int const patterns = isSlowRun() ? 5 : 20;  // valid ones
  int used = 0;
  for (int tried = 0; used < patterns; ++tried) {
    ASSERT_LT(tried, 100 * patterns);
    std::string const line = "filter \"" + randomlyNested(source) + '"';
    std::string const input = source.line() + '\n';
    compileAnotherPattern();
    std::clock_t const begin = std::clock();
    Answer const expected = ask(kLargeStack, kExecute, line, input);
    // Lines near the time limit may fail on some stacks only.
    if (std::clock() - begin > kLittleTime) continue;
    for (StackKind const& stack : kSmallStacks) {
      compileAnotherPattern();
      ASSERT_EQ(expected, ask(stack, kExecute, line, input)) << line;
    }
    if (expected.status == 0) ++used;
  }
}

// ---- Patterns nested by copies and subroutine calls

// Groups that each call the next one from within `depth` groups.
std::string callingChain(std::size_t groups, std::size_t depth) {
  std::string result = "(?1)";
  for (std::size_t i = 2; i <= groups; ++i) {
    result += '(' + repeated("(?:", depth) + "(?" + number(i) + ")" +
              repeated(")", depth) + ')';
  }
  return result + "(a)";
}

// Groups with a back reference to the previous one.
std::string referringChain(std::size_t groups) {
  std::string result = "(a?)";
  for (std::size_t i = 1; i < groups; ++i) {
    result += "(a?\\g{" + number(i) + "}?)";
  }
  return result + "\\g{" + number(groups) + '}';
}

struct GrowingPattern {
  char const* name;
  std::string (*make)(std::size_t size);
};

std::ostream& operator<<(std::ostream& out, GrowingPattern const& pattern) {
  return out << pattern.name;
}

class SmallStackGrowing : public SmallStack,
                          public testing::WithParamInterface<GrowingPattern> {};

TEST_P(SmallStackGrowing, IsAnsweredAlike) {
  for (std::size_t const size : {2U, 300U, 1000U}) {
    SCOPED_TRACE(size);
    expectSameOnAllStacks(GetParam().make(size), "ab");
  }
}

// Groups that each call the next one twice: each doubles the calls.
TEST_F(SmallStack, IsEnoughForDoublingsOfCalls) {
  for (std::size_t const groups : {2U, 5U, 10U, 14U}) {
    std::string pattern;
    for (std::size_t i = 2; i <= groups; ++i) {
      pattern += "(a?" + repeated("(?" + number(i) + ")", 2) + ')';
    }
    expectSameOnAllStacks(pattern + "(a?)b", "ab");
  }
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, SmallStackGrowing,
    testing::Values(
        GrowingPattern{
            "(a?){0,N}",
            [](std::size_t n) { return "(a?){0," + number(n) + '}'; }},
        GrowingPattern{
            "(a?){1,N}",
            [](std::size_t n) { return "(a?){1," + number(n) + '}'; }},
        GrowingPattern{"(a?) {0,N} with option x",
                       [](std::size_t n) {
                         return "(?x)(a?) (?#b)\\E{0," + number(n) + '}';
                       }},
        GrowingPattern{
            "(?:\\b(a?)){0,N}",
            [](std::size_t n) { return "(?:\\b(a?)){0," + number(n) + '}'; }},
        GrowingPattern{"((a?){0,N}){0,N}",
                       [](std::size_t n) {
                         return "((a?){0," + number(n) + "}){0," + number(n) +
                                '}';
                       }},
        GrowingPattern{
            "(a?)(?1){0,N}",
            [](std::size_t n) { return "(a?)(?1){0," + number(n) + '}'; }},
        GrowingPattern{
            "(?=a){0,N}",
            [](std::size_t n) { return "a(?=b){0," + number(n) + '}'; }},
        GrowingPattern{"calls from deep within",
                       [](std::size_t n) { return callingChain(14, n); }},
        GrowingPattern{
            "calls from within, repeated",
            [](std::size_t n) { return "(?:" + callingChain(12, n) + ")*"; }},
        GrowingPattern{"a long chain of calls",
                       [](std::size_t n) { return callingChain(n, 1); }},
        GrowingPattern{"a long chain of references", referringChain},
        GrowingPattern{
            "a?b?a?b?",
            [](std::size_t n) { return repeated("a?b?", n) + "cdefgh"; }},
        GrowingPattern{"a?+b?+ from within",
                       [](std::size_t n) {
                         return "(?:(?:(?:" + repeated("a?+b?+", n) +
                                "cdefgh)))";
                       }},
        GrowingPattern{
            "[ab]?c?",
            [](std::size_t n) { return repeated("[ab]?c?", n) + "defgh"; }},
        GrowingPattern{
            "(?:a?b?){N}",
            [](std::size_t n) { return "(?:a?b?){" + number(n) + "}cdefgh"; }},
        GrowingPattern{
            "a*(b)?(b)?",
            [](std::size_t n) { return "a*" + repeated("(b)?", n) + "x"; }},
        GrowingPattern{
            "a*(|b)(|b)",
            [](std::size_t n) { return "a*" + repeated("(|b)", n) + "x"; }},
        GrowingPattern{"behind what is hard to read", [](std::size_t n) {
                         return "(?xx)[ a]?" + repeated("\\c\\(", n) + 'a' +
                                repeated(")", n) + "?|ab";
                       }}));

// ---- This program

// Otherwise each function's first call would need the dynamic linker's stack.
TEST(SmallStackProgram, IsBoundAtStart) {
  ElfW(Dyn) const* entry = _DYNAMIC;
  while (entry->d_tag != DT_NULL && entry->d_tag != DT_FLAGS_1) ++entry;
  EXPECT_EQ(DT_FLAGS_1, entry->d_tag);
  EXPECT_NE(0U, entry->d_un.d_val & DF_1_NOW);
}

}  // namespace
}  // namespace qor_test
