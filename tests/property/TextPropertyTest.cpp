// The commands of libcli_text agree with their simplest definitions over the
// whole text, for any chunks.

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "Chunks.h"
#include "Pcre2Oracle.h"
#include "PluginTest.h"
#include "Seed.h"

namespace qor_test {
namespace {

using Texts = std::vector<std::string>;

// A use of a command.
struct Use {
  std::string command;
  bool option = false;  // the command's only one
  std::optional<std::string> pattern = {};
  std::optional<std::size_t> lines = {};
};

std::string commandLine(Use const& use) {
  std::string line = use.command;
  if (use.option) line += use.command == "unique" ? " -c" : " -i";
  if (use.pattern) line += " \"" + *use.pattern + '"';
  if (use.lines) line += ' ' + std::to_string(*use.lines);
  return line;
}

Texts linesOf(std::string const& text) {
  std::istringstream in(text);
  Texts lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// ---- Definitions

std::string inColumn(std::size_t number, int width, char const* after,
                     std::string const& line) {
  std::ostringstream out;
  out << std::setw(width) << number << after << line;
  return out.str();
}

Texts unique(Texts const& lines, bool count) {
  Texts result;
  for (auto run = lines.begin(); run != lines.end();) {
    auto const end =
        std::find_if(run, lines.end(),
                     [&](std::string const& line) { return line != *run; });
    auto const times = static_cast<std::size_t>(end - run);
    result.push_back(count ? inColumn(times, 7, " ", *run) : *run);
    run = end;
  }
  return result;
}

Texts numbered(Texts lines) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    lines[i] = inColumn(i + 1, 6, "\t", lines[i]);
  }
  return lines;
}

Texts defined(Use const& use, Texts const& lines) {
  Pcre2Oracle const pattern(use.pattern.value_or("^"), use.option);
  auto const matches = [&](std::string const& line) {
    return !use.pattern || pattern.matches(line).value();
  };
  auto const most = static_cast<std::ptrdiff_t>(
      std::min(use.lines.value_or(10), lines.size()));
  if (use.command == "begin") {
    return {std::find_if(lines.begin(), lines.end(), matches), lines.end()};
  }
  if (use.command == "count") {
    return {std::to_string(std::count_if(lines.begin(), lines.end(), matches))};
  }
  if (use.command == "head") return {lines.begin(), lines.begin() + most};
  if (use.command == "tail") return {lines.end() - most, lines.end()};
  return use.command == "unique" ? unique(lines, use.option) : numbered(lines);
}

std::string expected(Use const& use, std::string const& text) {
  std::string result;
  for (auto const& line : defined(use, linesOf(text))) result += line + '\n';
  return result;
}

// ---- The commands

class TextCommands : public PluginTest {
 protected:
  TextCommands() : PluginTest(QOR_CLI_TEXT_LIBRARY) {}

  // The output of a command for a text in chunks.
  std::string printed(Use const& use, Texts const& chunks) {
    session.clear();
    ++actionId_;
    for (std::string const& chunk : chunks) {
      ActionResult const result =
          this->use(kExecute, actionId_, commandLine(use), chunk);
      EXPECT_EQ(result.status, 0);
      EXPECT_EQ(result.commandMatchCount, 1U);
    }
    EXPECT_EQ(interface->inputComplete(&session.record, actionId_), 0);
    std::string text;
    for (auto const& output : textsOf(session.outputs)) text += output;
    return text;
  }

  std::size_t number(std::size_t min, std::size_t max) {
    return std::uniform_int_distribution<std::size_t>(min, max)(random_);
  }

  template <class Value>
  Value oneOf(std::vector<Value> const& values) {
    return values[number(0, values.size() - 1)];
  }

  // Sometimes as long as the longest lines of network elements.
  std::string randomLine() {
    if (number(0, 40) == 0) return std::string(number(1, 100'000), 'a');
    return oneOf<std::string>(
        {"", "a", "b", "A", "ab", "bb", "link up", "link down", "\xC3\xA4"});
  }

  std::string randomText() {
    std::string text;
    for (std::size_t i = number(0, 30); i > 0; --i) {
      std::string const line = randomLine();
      for (std::size_t j = number(1, 3); j > 0; --j) text += line + '\n';
    }
    if (!text.empty() && number(0, 3) == 0) text.pop_back();
    return text;
  }

  // Some are regular, and some may match the empty string.
  std::string randomPattern() {
    return oneOf<std::string>({"a", "^a$", "b|link", ".", "", "x*", "^", "B",
                               "(a|b)\\1", "(?=li)link", "n{2}", "up$",
                               "[[:upper:]]", "\\s"});
  }

  Use randomUse() {
    Use use{oneOf<std::string>(
        {"begin", "count", "head", "number", "tail", "unique"})};
    if (use.command == "begin" ||
        (use.command == "count" && number(0, 2) > 0)) {
      use.pattern = randomPattern();
    }
    if ((use.command == "head" || use.command == "tail") && number(0, 4) > 0) {
      use.lines = number(0, 40);
    }
    use.option = (use.pattern || use.command == "unique") && number(0, 1) == 1;
    return use;
  }

  std::mt19937 random_{testSeed()};
  unsigned actionId_ = 0;
};

// All texts up to six bytes of two letters and line feeds, split in every way.
TEST_F(TextCommands, agreeWithTheirDefinitionsOnAllShortTextsAndChunks) {
  constexpr unsigned kMaxLength = 6;  // bytes
  std::vector<Use> const uses{{"begin", false, "b"},
                              {"begin", true, "B"},
                              {"count"},
                              {"count", false, "a"},
                              {"count", true, "A$"},
                              {"head", false, {}, 1},
                              {"head", false, {}, 2},
                              {"number"},
                              {"tail", false, {}, 0},
                              {"tail", false, {}, 1},
                              {"tail", false, {}, 2},
                              {"unique"},
                              {"unique", true}};
  for (unsigned length = 0; length <= kMaxLength; ++length) {
    unsigned texts = 1;
    for (unsigned i = 0; i < length; ++i) texts *= 3;
    for (unsigned i = 0; i < texts; ++i) {
      std::string text;
      for (unsigned rest = i; text.size() < length; rest /= 3) {
        text += "ab\n"[rest % 3];
      }
      for (Use const& use : uses) {
        std::string const oracle = expected(use, text);
        for (unsigned cuts = 0; cuts < 1U << length; cuts += 2) {
          Texts chunks{""};
          for (unsigned at = 0; at < length; ++at) {
            if ((cuts >> at & 1U) != 0) chunks.emplace_back();
            chunks.back() += text[at];
          }
          ASSERT_EQ(printed(use, chunks), oracle)
              << commandLine(use) << " over " << testing::PrintToString(chunks);
        }
      }
    }
  }
}

TEST_F(TextCommands, agreeWithTheirDefinitionsOnRandomTexts) {
  for (int i = 0; i < 3000; ++i) {
    Use const use = randomUse();
    std::string const text = randomText();
    std::string const oracle = expected(use, text);
    for (Chunking const chunking :
         {Chunking::kWhole, Chunking::kLineByLine, Chunking::kRandom}) {
      ASSERT_EQ(printed(use, chunksOf(text, chunking, random_)), oracle)
          << commandLine(use) << ' ' << chunking
          << " with QOR_TEST_SEED=" << testSeed();
    }
  }
}

TEST_F(TextCommands, keepActionsApart) {
  for (Use const& use :
       {Use{"count"}, Use{"tail", false, {}, 1}, Use{"unique", true},
        Use{"number"}, Use{"begin", false, "b"}, Use{"head", false, {}, 2}}) {
    std::string const line = commandLine(use);
    session.clear();
    this->use(kExecute, 1, line, "a\na\nb\n");
    this->use(kExecute, 2, line, "c\nb\n");
    EXPECT_EQ(interface->inputComplete(&session.record, 2), 0);
    this->use(kExecute, 1, line, "b\n");
    EXPECT_EQ(interface->inputComplete(&session.record, 1), 0);
    std::map<unsigned, std::string> texts;  // by action id
    for (OutputCall const& output : session.outputs) {
      texts[output.actionId] += output.text;
    }
    EXPECT_EQ(texts[1], expected(use, "a\na\nb\nb\n")) << line;
    EXPECT_EQ(texts[2], expected(use, "c\nb\n")) << line;
  }
}

// Lines after the first match are not matched, so they cannot fail.
TEST_F(TextCommands, beginMatchesNoLineAfterTheFirstMatch) {
  std::string const endless = "a|b((?1))";  // fails on a line with a b
  EXPECT_EQ(
      use(kExecute, ++actionId_, "count \"" + endless + '"', "b\n").status, -1);
  EXPECT_EQ(printed({"begin", false, endless}, {"c\na\nb\n"}), "a\nb\n");
  EXPECT_EQ(printed({"begin", false, endless}, {"c\na\n", "b\n"}), "a\nb\n");
}

TEST_F(TextCommands, leaveNothingMapped) {
  EXPECT_EQ(printed({"count", true, "A"}, {"a\n"}), "1\n");
  EXPECT_EQ(printed({"begin", false, "(a)\\1"}, {"aa\n"}), "aa\n");
  plugin.terminate();
  EXPECT_TRUE(plugin.unload());
  EXPECT_FALSE(Plugin::isMapped(QOR_CLI_TEXT_LIBRARY));
  plugin.terminate = [] {};
}

}  // namespace
}  // namespace qor_test
