// Help and Tab say of no line that it may be run which is then refused; and of
// lines that may be run, help says so.

#include <gtest/gtest.h>

#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "calls/Session.h"
#include "commands/SourceCommands.h"
#include "completion/Completer.h"
#include "diagnostics/Diagnostics.h"
#include "output/OutputWriter.h"
#include "plugins/Plugins.h"
#include "session/CommandRunner.h"
#include "sources/StandardInput.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

using Words = std::vector<std::string>;

// Every line of at least one and at most `count` of the words.
std::vector<std::string> linesOf(Words const& words, std::size_t count) {
  std::vector<std::string> lines{""};
  std::size_t begin = 0;
  for (; count > 0; --count) {
    std::size_t const end = lines.size();
    for (; begin < end; ++begin) {
      for (std::string const& word : words) {
        std::string const before = lines[begin];
        lines.push_back(before + (before.empty() ? "" : " ") + word);
      }
    }
  }
  lines.erase(lines.begin());
  return lines;
}

std::string noText() { return ""; }

class DroppingWriter : public OutputWriter {
 public:
  void writeIfFull() override { buffer().clear(); }
  void flush() override { buffer().clear(); }
  void finish() override { buffer().clear(); }
};

class LineEnds : public testing::Test {
 protected:
  LineEnds() : errors_(std::cerr.rdbuf(messages_.rdbuf())) {}
  ~LineEnds() override { std::cerr.rdbuf(errors_); }

  // Whether the line is not refused; a file may still be missing.
  bool isUnderstood(std::string const& line) {
    messages_.str("");
    return runner_.run(line) ||
           messages_.str().find("cannot open") != std::string::npos;
  }

  // What is offered; nothing, for a line that cannot be cut into words.
  template <class Ask>
  std::set<std::string> offers(Ask const& ask) {
    std::set<std::string> texts;
    try {
      for (Candidate const& each : ask()) texts.insert(each.completion);
    } catch (CommandFailure const&) {
      return {};
    }
    return texts;
  }

  // For each line, with and without a blank behind it.
  void compare(std::string const& before,
               std::vector<std::string> const& lines) {
    std::size_t running = 0;
    for (std::string const& words : lines) {
      std::string const line = before + words;
      bool const mayRun = isUnderstood(line);
      if (mayRun) ++running;
      for (char const* end : {"", " "}) compare(line + end, mayRun);
    }
    EXPECT_GT(running, 0U) << before;
    EXPECT_LT(running, lines.size()) << before;
  }

  void compare(std::string const& line, bool mayRun) {
    auto const help = offers([&] { return completer_.help(line); });
    EXPECT_EQ(help.count("<cr>") != 0, mayRun) << '[' << line << ']';
    EXPECT_EQ(help.count("|") != 0, mayRun) << '[' << line << ']';
    auto const completion = offers([&] { return completer_.complete(line); });
    EXPECT_TRUE(mayRun || completion.count("<cr>") == 0) << '[' << line << ']';
  }

 private:
  std::ostringstream messages_;
  std::streambuf* errors_;
  Diagnostics diagnostics_{false, false};
  Plugins plugins_{{QOR_CLI_PIPE_LIBRARY, QOR_CLI_TEXT_LIBRARY}, diagnostics_};
  Session session_{0, "", "tester"};
  SourceCommands sourceCommands_{
      session_,
      {noText, noText, noText, noText, noText,
       [](std::string const&) { return std::string(); },
       [](std::string const&) { return Words(); }}};
  Completer completer_{session_, sourceCommands_};
  StandardInput input_;
  DroppingWriter output_;
  CommandRunner runner_{plugins_, session_, sourceCommands_, completer_,
                        input_,   output_,  diagnostics_};
};

TEST_F(LineEnds, ofCommands) {
  compare("", linesOf({"show", "sh", "file", "tree", "tr", "--dot", "--d",
                       "/dev/null", "echo", "e", "help", "x", "\"a b\""},
                      3));
}

TEST_F(LineEnds, ofFilter) {
  compare("echo x | ", linesOf({"filter", "fil", "-i", "--invert", "--inv",
                                "-a", "3", "x", "-", "--", "\"a b\"", "\"a"},
                               4));
}

TEST_F(LineEnds, ofTextCommands) {
  for (char const* command : {"begin", "count", "head", "number", "tail",
                              "unique", "un", "f", "filter"}) {
    compare("echo x | " + std::string(command),
            linesOf({" -i", " --ignore", " -c", " --co", " 3", " x", " "}, 3));
  }
}

TEST_F(LineEnds, ofLinesWithRefusedStages) {
  compare("", {"x | filter a", "echo x | | filter a", "| filter a",
               "echo x | zzz | filter a", "echo x | filter -i | filter a",
               "echo x | fil y | count", "show | count", "sh tr | count",
               "echo x |", "echo x | u | u", "zzz", "echo x | zzz 3"});
}

}  // namespace
}  // namespace QorCliEngine
