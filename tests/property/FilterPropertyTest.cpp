#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "Chunks.h"
#include "CliApiContext5.h"
#include "ContextRules.h"
#include "FilterCommand.h"
#include "FilterMap.h"
#include "FilterOracle.h"
#include "LineMatcher.h"
#include "PipeOutput1.h"
#include "Seed.h"

namespace qor_test {
namespace {

using QorCliMatching::LineMatcher;
using QorCliPipe::ContextRules;
using QorCliPipe::FilterCommand;
using QorCliPipe::PipeOutput1;
using Texts = std::vector<std::string>;

constexpr std::size_t kExhaustiveLength = 10;
constexpr std::size_t kExhaustiveContext = 3;
constexpr double kSeconds = 1;
constexpr Chunking kChunkings[] = {Chunking::kWhole, Chunking::kLineByLine,
                                   Chunking::kRandom};

// A call of the filter.
struct FilterCase {
  std::string pattern;  // a literal without quotes and blanks
  bool ignoreCase;
  bool invert;
  OracleContext context;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, FilterCase const& filterCase) {
  return out << "pattern '" << filterCase.pattern << "' -i "
             << filterCase.ignoreCase << " -v " << filterCase.invert << " -a "
             << filterCase.context.after << " -b " << filterCase.context.before
             << " over:\n"
             << filterCase.text;
}

std::string lowerCased(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

bool isFoundIn(FilterCase const& filterCase, std::string const& line) {
  if (!filterCase.ignoreCase) {
    return line.find(filterCase.pattern) != std::string::npos;
  }
  return lowerCased(line).find(lowerCased(filterCase.pattern)) !=
         std::string::npos;
}

Texts expected(FilterCase const& filterCase) {
  return keptLines(oracleLines(filterCase.text,
                               [&](std::string const& line) {
                                 return isFoundIn(filterCase, line) !=
                                        filterCase.invert;
                               }),
                   filterCase.context);
}

// The lines kept by the matching core, without a command line.
Texts keptByCore(FilterCase const& filterCase) {
  LineMatcher matcher(filterCase.pattern, filterCase.ignoreCase, kSeconds);
  QorCliPipe::PipeCmd::FilterStruct state;
  Texts kept;
  ContextRules rules(static_cast<int>(filterCase.context.after),
                     static_cast<int>(filterCase.context.before), state, kept);
  std::size_t begin = 0;
  for (std::size_t feed = filterCase.text.find('\n'); feed != std::string::npos;
       feed = filterCase.text.find('\n', begin)) {
    std::string const line = filterCase.text.substr(begin, feed + 1 - begin);
    bool const found = matcher.matches(line.substr(0, line.size() - 1));
    found != filterCase.invert ? rules.selected(line) : rules.unselected(line);
    begin = feed + 1;
  }
  return kept;
}

Texts commandLine(FilterCase const& filterCase) {
  Texts tokens{"filter", "-a", std::to_string(filterCase.context.after),
               "--before", std::to_string(filterCase.context.before)};
  if (filterCase.ignoreCase) tokens.emplace_back("--IGNORE");
  if (filterCase.invert) tokens.emplace_back("-v");
  tokens.push_back(filterCase.pattern);
  return tokens;
}

// The lines kept by the command in one action: each case's text is delivered in
// chunks, with the options of the case.
Texts keptByCommand(std::vector<FilterCase> const& cases, Chunking chunking,
                    std::mt19937& random) {
  QorCliApiContext_5 record{};
  QorCliUtilities::CliApiContext5 context(&record);
  context.setActionId(static_cast<unsigned>(random()));
  Texts kept;
  for (FilterCase const& filterCase : cases) {
    Texts const tokens = commandLine(filterCase);
    for (std::string const& chunk :
         chunksOf(filterCase.text, chunking, random)) {
      PipeOutput1 output;
      output.push_back(chunk);
      EXPECT_EQ(0, FilterCommand::instance().execute(context, tokens, output));
      std::move(output.getOutput().begin(), output.getOutput().end(),
                std::back_inserter(kept));
    }
  }
  QorCliPipe::PipeCmd::FilterMap.clear();
  return kept;
}

Texts keptByCommand(FilterCase const& filterCase, Chunking chunking,
                    std::mt19937& random) {
  return keptByCommand(std::vector<FilterCase>{filterCase}, chunking, random);
}

// Checks a case with every interface of the filter.
void check(FilterCase const& filterCase, std::mt19937& random) {
  Texts const oracle = expected(filterCase);
  ASSERT_EQ(oracle, keptByCore(filterCase)) << filterCase;
  for (Chunking const chunking : kChunkings) {
    ASSERT_EQ(oracle, keptByCommand(filterCase, chunking, random))
        << nameOf(chunking) << ' ' << filterCase;
  }
}

// `count` different lines; those at the set bits of `selected` contain an M.
std::string linesOf(std::size_t count, std::size_t selected) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += ((selected >> i) & 1U) != 0 ? 'M' : 'x';
    text += std::to_string(i) + '\n';
  }
  return text;
}

class ExhaustiveFilter
    : public testing::TestWithParam<std::tuple<std::size_t, std::size_t>> {};

TEST_P(ExhaustiveFilter, KeepsWhatTheOracleKeeps) {
  auto const [after, before] = GetParam();
  std::mt19937 random(testSeed());
  for (std::size_t length = 0; length <= kExhaustiveLength; ++length) {
    for (std::size_t selected = 0; selected < std::size_t{1} << length;
         ++selected) {
      std::string const text = linesOf(length, selected);
      check({"M", false, false, {after, before}, text}, random);
      check({"M", false, true, {after, before}, text}, random);
      if (HasFatalFailure()) return;
    }
  }
}

std::string nameOfContext(
    testing::TestParamInfo<std::tuple<std::size_t, std::size_t>> const& test) {
  auto const [after, before] = test.param;
  return "After" + std::to_string(after) + "Before" + std::to_string(before);
}

INSTANTIATE_TEST_SUITE_P(
    Contexts, ExhaustiveFilter,
    testing::Combine(testing::Range<std::size_t>(0, kExhaustiveContext + 1),
                     testing::Range<std::size_t>(0, kExhaustiveContext + 1)),
    nameOfContext);

class RandomFilter : public testing::Test {
 protected:
  std::size_t upTo(std::size_t highest) {
    return std::uniform_int_distribution<std::size_t>(0, highest)(random_);
  }

  // A word of the few letters of patterns and lines.
  std::string word(std::size_t shortest, std::size_t longest) {
    static char const letters[] = "abAB";
    std::string text;
    std::size_t const length = shortest + upTo(longest - shortest);
    while (text.size() < length) text += letters[upTo(3)];
    return text;
  }

  // Lines with a number at the end, so that no two are equal.
  std::string lines(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
      text += word(0, 6) + ' ' + std::to_string(i) + '\n';
    }
    return text;
  }

  FilterCase filterCase() {
    std::string text = lines(upTo(200));
    if (upTo(3) == 0) text += word(0, 6);
    return {word(1, 4), upTo(1) == 1, upTo(1) == 1, {upTo(6), upTo(6)}, text};
  }

  std::mt19937 random_{testSeed()};
};

TEST_F(RandomFilter, KeepsWhatTheOracleKeeps) {
  for (int i = 0; i < 500; ++i) {
    check(filterCase(), random_);
    if (HasFatalFailure()) return;
  }
}

TEST_F(RandomFilter, InvertedIsTheComplement) {
  for (int i = 0; i < 200; ++i) {
    FilterCase plain = filterCase();
    plain.context = {0, 0};
    plain.invert = false;
    FilterCase inverted = plain;
    inverted.invert = true;
    Texts both = keptByCommand(plain, Chunking::kRandom, random_);
    Texts const rest = keptByCommand(inverted, Chunking::kRandom, random_);
    both.insert(both.end(), rest.begin(), rest.end());
    std::sort(both.begin(), both.end());

    Texts all;
    for (OracleLine const& line :
         oracleLines(plain.text, [](std::string const&) { return true; })) {
      all.push_back(line.text);
    }
    std::sort(all.begin(), all.end());
    ASSERT_EQ(all, both) << plain;
  }
}

TEST_F(RandomFilter, KeepsTheOrderAndInventsNoLine) {
  for (int i = 0; i < 200; ++i) {
    FilterCase const someCase = filterCase();
    std::size_t position = 0;
    for (std::string const& line :
         keptByCommand(someCase, Chunking::kRandom, random_)) {
      if (line == kSeparator) continue;
      position = someCase.text.find(line, position);
      ASSERT_NE(std::string::npos, position) << line << someCase;
      ASSERT_TRUE(position == 0 || someCase.text[position - 1] == '\n')
          << line << someCase;
      position += line.size();
    }
  }
}

TEST_F(RandomFilter, SeparatesGroupsOnly) {
  for (int i = 0; i < 200; ++i) {
    FilterCase const someCase = filterCase();
    Texts const kept = keptByCommand(someCase, Chunking::kRandom, random_);
    bool separator = true;  // none may come first
    for (std::string const& line : kept) {
      ASSERT_FALSE(separator && line == kSeparator) << someCase;
      separator = line == kSeparator;
    }
    ASSERT_FALSE(!kept.empty() && separator) << someCase;
  }
}

// ---- Options that change between the calls of an action
//
// They apply to the lines of their call. Leading context and trailing lines
// left over from an earlier call remain.

TEST_F(RandomFilter, AcceptsDifferentOptionsInEachCall) {
  for (int i = 0; i < 500; ++i) {
    std::vector<FilterCase> cases(1 + upTo(4));
    for (FilterCase& someCase : cases) {
      someCase = filterCase();
      someCase.text = lines(upTo(12));
    }
    Texts const expected = keptByCommand(cases, Chunking::kLineByLine, random_);
    for (Chunking const chunking : {Chunking::kWhole, Chunking::kRandom}) {
      ASSERT_EQ(expected, keptByCommand(cases, chunking, random_))
          << nameOf(chunking) << ' ' << testing::PrintToString(cases);
    }
  }
}

struct ChangeRow {
  OracleContext first;
  std::string firstText;
  OracleContext second;
  std::string secondText;
  std::string kept;
};

std::ostream& operator<<(std::ostream& out, ChangeRow const& row) {
  return out << testing::PrintToString(row.firstText) << ", then "
             << testing::PrintToString(row.secondText);
}

class ChangedContext : public testing::TestWithParam<ChangeRow> {};

TEST_P(ChangedContext, AppliesFromTheNextCallOn) {
  ChangeRow const& row = GetParam();
  std::mt19937 random(testSeed());
  for (Chunking const chunking : kChunkings) {
    std::string kept;
    for (std::string const& line :
         keptByCommand({{"M", false, false, row.first, row.firstText},
                        {"M", false, false, row.second, row.secondText}},
                       chunking, random)) {
      kept += line;
    }
    EXPECT_EQ(row.kept, kept) << nameOf(chunking);
  }
}

// Once the ring buffer holds the limit or more, each line replaces the oldest.
INSTANTIATE_TEST_SUITE_P(
    Before, ChangedContext,
    testing::Values(
        ChangeRow{{0, 3}, "a\nb\nc\n", {0, 1}, "d\ne\nf\nM\n", "d\ne\nf\nM\n"},
        ChangeRow{{0, 3}, "a\nb\nc\n", {0, 1}, "d\nM\n", "b\nc\nd\nM\n"},
        ChangeRow{{0, 3}, "a\nb\nc\n", {0, 1}, "M\n", "a\nb\nc\nM\n"},
        ChangeRow{{0, 3}, "a\n", {0, 1}, "b\nc\nM\n", "c\nM\n"},
        ChangeRow{{0, 1}, "a\nb\n", {0, 3}, "c\nM\n", "b\nc\nM\n"},
        ChangeRow{{0, 2}, "a\nb\n", {0, 0}, "c\nM\n", "M\n"}));

INSTANTIATE_TEST_SUITE_P(
    After, ChangedContext,
    testing::Values(
        ChangeRow{{3, 0}, "M\na\n", {1, 0}, "b\nc\nd\n", "M\na\nb\nc\n"},
        ChangeRow{
            {1, 0}, "M\na\n", {3, 0}, "b\nM\nc\n", "M\na\n   --\nM\nc\n"}));

}  // namespace
}  // namespace qor_test
