#include <Poco/Exception.h>
#include <Poco/RegularExpression.h>
#include <gtest/gtest.h>

#include <iterator>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "PluginTest.h"
#include "RandomPattern.h"
#include "Seed.h"
#include "SmallStack.h"

namespace qor_test {
namespace {

constexpr std::size_t kKiB = 1024;
constexpr std::size_t kMiB = 1024 * kKiB;
constexpr std::size_t kLongLine = kMiB;  // bytes
constexpr std::size_t kSmallStacks[] = {128 * kKiB, 64 * kKiB};
constexpr std::size_t kLargeStack = 64 * kMiB;
constexpr unsigned kActionId = 3;
constexpr char kNotFound[] = "ERROR: Command not found\n";

using Texts = std::vector<std::string>;

std::string repeated(std::string const& text, std::size_t times) {
  std::string result;
  result.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

// What came of an action, as the engine sees it.
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

class SmallStack : public PluginTest {
 protected:
  // What a call has compiled on a large stack shall not save another on a small
  // one from doing so.
  void compileAnotherPattern() { use(kExecute, kActionId, "filter z", "w\n"); }

  Answer ask(std::size_t stack, unsigned action, std::string const& line,
             std::string const& input = "") {
    session.clear();
    ActionResult result{};
    runOnStackOf(stack, [&] { result = use(action, kActionId, line, input); });
    Answer answer{
        result.status, result.commandMatchCount, textsOf(session.outputs), {}};
    for (CandidateCall const& candidate : session.candidates) {
      answer.candidates.push_back(candidate.completion);
    }
    return answer;
  }
};

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
  constexpr std::size_t longest = 1999;  // bytes of an error text
  return ("ERROR: Invalid value '" + value).substr(0, longest);
}

class SmallStackCommandLine : public SmallStack,
                              public testing::WithParamInterface<CommandLine> {
};

TEST_P(SmallStackCommandLine, IsExecuted) {
  for (std::size_t const stack : kSmallStacks) {
    EXPECT_EQ(GetParam().executed,
              ask(stack, kExecute, GetParam().line, "w\n"));
  }
}

TEST_P(SmallStackCommandLine, IsCompletedAsOnALargeStack) {
  for (unsigned const action : {kComplete, kHelp}) {
    Answer const expected = ask(kLargeStack, action, GetParam().line);
    for (std::size_t const stack : kSmallStacks) {
      EXPECT_EQ(expected, ask(stack, action, GetParam().line));
    }
  }
}

// A pattern of 1 MiB is more than the regular expression compiler takes.
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
                    "filter" + repeated(" w", 100000),
                    {-1, 1, {kNotFound}, {}}},
        CommandLine{"options",
                    "filter" + repeated(" -i", 100000) + " W",
                    {0, 1, {"w\n"}, {}}},
        CommandLine{
            "words of no command", repeated("w ", 100000), {0, 0, {}, {}}}));

// ---- Lines

// A line and a pattern that machine code decides.
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
  for (std::size_t const stack : kSmallStacks) {
    EXPECT_EQ(expected,
              ask(stack, kExecute,
                  "filter \"" + std::string(GetParam().pattern) + '"', line));
  }
}

std::string alternating(std::string const& end) {
  return repeated("ab", kLongLine / 2) + end;
}

INSTANTIATE_TEST_SUITE_P(
    LongLines, SmallStackLine,
    testing::Values(LongLine{"(a|b)*c", alternating("c"), true},
                    LongLine{"^(a|b)*x", alternating("c"), false},
                    LongLine{"((a)(b))*c", alternating("c"), true},
                    LongLine{"(ab)+c$", alternating("c"), true},
                    LongLine{"(?:a|b)+c", alternating("c"), true},
                    LongLine{"^(?:(a)|(b))+c$", alternating("c"), true},
                    LongLine{"(a*b)*c", alternating("c"), true},
                    LongLine{"((?:a|ab)b?)*c", alternating("c"), true},
                    LongLine{"(.*)(.*)(.*)c", alternating("c"), true},
                    LongLine{"^(.)(.).*\\1\\2c$", alternating("c"), true},
                    LongLine{"^(..)\\1*c", alternating("c"), true},
                    LongLine{"^(..)\\1*x", alternating("c"), false},
                    LongLine{"^(?:(?=a)a|b)*?c", alternating("c"), true},
                    LongLine{"(?>(?:ab)*)c", alternating("c"), true},
                    LongLine{"x(a|b)*", alternating("c"), false},
                    LongLine{"[^c]*c[^c]*$", alternating("c"), true}));

// Without machine code the pattern takes stack for each repetition, and there
// is no right answer that a small stack can give.
TEST_F(SmallStack, GivesUpWhereThereIsNoMachineCode) {
  std::string const line = alternating("c") + '\n';
  for (char const* pattern :
       {"(*UTF8)(a|b)*c", "(*UTF8)(*LIMIT_RECURSION=10000000)(a|b)*c",
        "(*LIMIT_RECURSION=99999999)(*LIMIT_MATCH=99999999)(*UTF8)((a)|b)*c",
        "(*UTF8)^(.)(?:(a)|(b))*\\1c"}) {
    for (std::size_t const stack : kSmallStacks) {
      EXPECT_EQ(
          (Answer{-1, 1, {}, {}}),
          ask(stack, kExecute, "filter \"" + std::string(pattern) + '"', line))
          << pattern;
    }
  }
}

// Recursion over a line needs memory for each level: the answer is right, or
// there is none.
TEST_F(SmallStack, SurvivesRecursivePatterns) {
  for (std::size_t const depth : {10U, 1000U, 100000U}) {
    std::string const line =
        std::string(depth, 'a') + std::string(depth, 'b') + '\n';
    for (char const* pattern : {"^(a(?1)?b)$", "a(?R)?b", "^(?P<n>a(?P>n)?b)$",
                                "(*UTF8)^(a(?1)?b)$"}) {
      for (std::size_t const stack : kSmallStacks) {
        Answer const answer = ask(
            stack, kExecute, "filter \"" + std::string(pattern) + '"', line);
        Answer const expected = answer.status == 0 ? Answer{0, 1, {line}, {}}
                                                   : Answer{-1, 1, {}, {}};
        EXPECT_EQ(expected, answer) << pattern << " at depth " << depth;
        EXPECT_TRUE(depth > 10 || answer.status == 0) << pattern;
      }
    }
  }
}

// ---- Nested patterns

// A group that is put around a pattern again and again.
struct Nest {
  char const* open;
  char const* close;
};

std::ostream& operator<<(std::ostream& out, Nest const& nest) {
  return out << nest.open << nest.close;
}

// What a pattern makes of "ab": nothing when it is refused.
std::optional<bool> saidByPoco(std::string const& pattern) {
  std::optional<bool> said;
  runOnStackOf(kLargeStack, [&] {
    try {
      Poco::RegularExpression const expression(
          pattern,
          Poco::RegularExpression::RE_NO_AUTO_CAPTURE |
              Poco::RegularExpression::RE_NEWLINE_LF,
          true);
      std::string matched;
      expression.extract("ab", matched, 0);
      said = !matched.empty();
    } catch (Poco::Exception const&) {
      // Refused.
    }
  });
  return said;
}

class SmallStackNest : public SmallStack,
                       public testing::WithParamInterface<Nest> {
 protected:
  static std::string nested(std::size_t depth) {
    return repeated(GetParam().open, depth) + 'a' +
           repeated(GetParam().close, depth);
  }

  Answer askFor(std::size_t stack, std::string const& pattern) {
    return ask(stack, kExecute, "filter \"" + pattern + '"', "ab\n");
  }
};

Answer const kRefusal{-1, 1, {}, {}};

Answer answerOf(std::optional<bool> said) {
  if (!said) return kRefusal;
  return *said ? Answer{0, 1, {"ab\n"}, {}} : Answer{0, 1, {}, {}};
}

// PCRE takes 250 levels at most.
TEST_P(SmallStackNest, IsUsedOrRefused) {
  for (std::size_t const depth :
       {1U,   2U,   5U,   10U,  20U,  40U,  60U,  80U,   100U,   125U,   150U,
        175U, 200U, 225U, 249U, 250U, 251U, 500U, 1000U, 10000U, 100000U}) {
    Answer const expected = answerOf(saidByPoco(nested(depth)));
    EXPECT_EQ(expected, askFor(kLargeStack, nested(depth))) << depth;
    for (std::size_t const stack : kSmallStacks) {
      // What has been compiled is used; then it must be compiled once more.
      for (int call = 0; call < 2; ++call) {
        Answer const answer = askFor(stack, nested(depth));
        EXPECT_TRUE(answer == expected || answer == kRefusal)
            << depth << ": " << answer;
        compileAnotherPattern();
      }
    }
  }
}

TEST_P(SmallStackNest, IsUsedWhenItIsShallow) {
  for (std::size_t const depth : {1U, 5U, 10U, 15U}) {
    Answer const expected = answerOf(saidByPoco(nested(depth)));
    for (std::size_t const stack : kSmallStacks) {
      compileAnotherPattern();
      EXPECT_EQ(expected, askFor(stack, nested(depth))) << depth;
    }
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
  std::size_t const wanted = source.below(100);
  for (std::size_t depth = 0; depth < wanted; ++depth) {
    Nest const& nest = kNests[source.below(std::size(kNests))];
    pattern = nest.open + pattern + nest.close;
  }
  return pattern;
}

TEST_F(SmallStack, GivesTheSameAnswerToRandomPatternsOrNone) {
  std::mt19937 random(testSeed());
  RandomPattern source(random);
  int const patterns = isSlowRun() ? 200 : 1000;
  int used = 0;
  for (int i = 0; i < patterns; ++i) {
    std::string const line = "filter \"" + randomlyNested(source) + '"';
    std::string const input = source.line() + '\n';
    for (std::size_t const stack : kSmallStacks) {
      compileAnotherPattern();
      Answer const answer = ask(stack, kExecute, line, input);
      compileAnotherPattern();
      Answer const expected = ask(kLargeStack, kExecute, line, input);
      ASSERT_TRUE(answer == expected || answer.status == -1)
          << line << ": " << answer;
      if (answer.status == 0) ++used;
    }
  }
  EXPECT_GT(used, patterns / 20);
}

// ---- Patterns that are nested by copies and by calls

std::string number(std::size_t n) { return std::to_string(n); }

// Groups of which each calls the next one from within `depth` groups.
std::string callingChain(std::size_t groups, std::size_t depth) {
  std::string result = "(?1)";
  for (std::size_t i = 2; i <= groups; ++i) {
    result += '(' + repeated("(?:", depth) + "(?" + number(i) + ")" +
              repeated(")", depth) + ')';
  }
  return result + "(a)";
}

// Groups of which each refers to the text of the one before.
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
                          public testing::WithParamInterface<GrowingPattern> {
 protected:
  Answer askFor(std::size_t stack, std::size_t size) {
    return ask(stack, kExecute, "filter \"" + GetParam().make(size) + '"',
               "ab\n");
  }
};

TEST_P(SmallStackGrowing, IsUsedOrRefused) {
  for (std::size_t const size : {2U, 3U, 10U, 20U, 40U, 80U, 150U, 300U, 600U,
                                 1500U, 2500U, 3600U, 4500U, 65535U}) {
    Answer const expected = askFor(kLargeStack, size);
    for (std::size_t const stack : kSmallStacks) {
      compileAnotherPattern();
      Answer const answer = askFor(stack, size);
      EXPECT_TRUE(answer == expected || answer == kRefusal)
          << size << ": " << answer;
    }
    EXPECT_TRUE(size > 3 || expected.status == 0) << size;
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
        GrowingPattern{"(b|)",
                       [](std::size_t n) { return repeated("(b|)", n) + 'b'; }},
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

}  // namespace
}  // namespace qor_test
