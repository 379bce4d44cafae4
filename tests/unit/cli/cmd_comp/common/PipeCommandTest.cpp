#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "ACOptions.h"
#include "Candidates.h"
#include "Error.h"
#include "LinesOutput.h"
#include "PipeCommand.h"
#include "RecordingContext.h"

namespace QorCliUtilities {
namespace {

unsigned runsAlive = 0;

// Prints the lines that begin with a letter, each after its number, and finally
// "end". Fails at a line "throw", and at the end after a line "throw later".
class Number : public LineProcessor {
 public:
  static CommandSyntax syntax() {
    return {"number",
            "Number lines",
            {{"-s", "--step", "How far apart",
              Parameter::number("<step>", "A step", 1, 9)},
             {"-o", "--order", "Which way",
              Parameter::choice("<order>", "The order", {"up", "down"})},
             {"-q", "", "Say no end"}},
            {Parameter::text("<letter>", "How lines begin").optional()}};
  }

  explicit Number(Arguments const& typed)
      : step_(typed.number("-s", 1)),
        quiet_(typed.has("-q")),
        letter_(typed.text("<letter>")) {
    if (letter_ == "?") throw Error("No such letter", 0);
    ++runsAlive;
  }
  ~Number() override { --runsAlive; }

  void line(std::string_view text, Printer& printer) override {
    if (text == "throw") throw std::runtime_error("thrown");
    if (text == "throw 5") throw 5;
    if (text == "throw Poco") throw Poco::SyntaxException("no such line");
    if (text == "throw Error") throw Error("no such line", 0);
    throwsLater_ = throwsLater_ || text == "throw later";
    if (text.rfind(letter_, 0) != 0) return;
    printer.line(std::to_string(number_ += step_) + ' ' + std::string(text));
  }

  void end(Printer& printer) override {
    if (throwsLater_) throw std::runtime_error("thrown later");
    if (!quiet_) printer.line("end");
  }

 private:
  unsigned step_;
  bool quiet_;
  bool throwsLater_ = false;
  std::string letter_;
  unsigned number_ = 0;
};

class PipeCommandTest : public testing::Test {
 public:
  PipeCommandTest() { command->addTo(tree); }
  ~PipeCommandTest() override {
    command->forgetRuns();
    EXPECT_EQ(runsAlive, 0U);
  }

  // The output for a chunk of an action's input.
  std::string execute(char const* line, char const* chunk, unsigned id = 1) {
    LinesOutput output;
    output.push_back(std::string(chunk));
    session.context.setActionId(id);
    unsigned matches = 0;
    status = tree.executeCommand(session.context, line, &matches, output);
    if (matches == 0) return "no command";
    return testing::PrintToString(output.getOutput());
  }

  std::string complete(unsigned id = 1) {
    LinesOutput output;
    status = command->complete(id, output);
    return testing::PrintToString(output.getOutput());
  }

  std::string offered(char const* line, bool help) {
    LinesOutput output;
    std::vector<AutoCompleteResult> results;
    help ? tree.helpRequest(session.context, line, results, output)
         : tree.autoCompleteCommand(session.context, line, "", results, output);
    return QorUnit::textsAndTokens(results);
  }

  std::unique_ptr<PipeCommand> command = makePipeCommand<Number>();
  AutoCompleteTree tree;
  QorUnit::RecordingContext session;
  int status = 0;
};

TEST_F(PipeCommandTest, WorksLineByLine) {
  EXPECT_STREQ(command->name(), "number");
  EXPECT_EQ(execute("number", ""), "{}");
  EXPECT_EQ(execute("number", "a\nb\n"), R"({ "1 a\n2 b\n" })");
  EXPECT_EQ(execute("number", "c"), "{}");
  EXPECT_EQ(execute("number", "d\ne"), R"({ "3 cd\n" })");
  EXPECT_EQ(complete(), R"({ "4 e\nend\n" })");
  EXPECT_EQ(status, 0);
  EXPECT_EQ(complete(), "{}");
  EXPECT_EQ(status, 0);
}

TEST_F(PipeCommandTest, ParsesTheLine) {
  EXPECT_EQ(execute("number -s 3 a -q", "a\nb\nab\n"), R"({ "3 a\n6 ab\n" })");
  EXPECT_EQ(complete(), "{}");
  EXPECT_EQ(execute("NUMBER \"a b\" --STEP 9", "ab\na b\n"),
            R"({ "9 a b\n" })");
}

TEST_F(PipeCommandTest, KeepsARunForEachAction) {
  execute("number -s 2", "a\n", 1);
  execute("number", "a\n", 2);
  EXPECT_EQ(runsAlive, 2U);
  EXPECT_EQ(execute("number -s 2", "b\n", 1), R"({ "4 b\n" })");
  // Later chunks ignore the words.
  EXPECT_EQ(execute("number -x", "c\n", 1), R"({ "6 c\n" })");
  EXPECT_EQ(execute("number", "b\n", 2), R"({ "2 b\n" })");
  EXPECT_EQ(complete(2), R"({ "end\n" })");
  EXPECT_EQ(runsAlive, 1U);
  EXPECT_EQ(execute("number -s 2", "d\n", 1), R"({ "8 d\n" })");
  command->forgetRuns();
  EXPECT_EQ(runsAlive, 0U);
  EXPECT_EQ(complete(1), "{}");
}

TEST_F(PipeCommandTest, ReportsWhyItFails) {
  struct {
    char const* line;
    char const* error;
  } const rows[] = {
      {"number -x", "Unknown option '-x'"},
      {"number a b", "Unexpected word 'b'"},
      {"number -s", "Missing value after '-s'"},
      {"number -S 0",
       "Invalid value '0' for integer parameter '-S'. Valid values are in "
       "range : [1,9]"},
      {"number -o left",
       "Invalid value 'left' for parameter '-o'. Valid values are: "
       "[up,down]"},
      {"number ?", "No such letter"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(execute(row.line, "a\n"),
              "{ \"ERROR: " + std::string(row.error) + "\\n\" }");
    EXPECT_EQ(status, -1);
    EXPECT_EQ(complete(), "{}");
    EXPECT_EQ(status, 0);
  }
}

TEST_F(PipeCommandTest, AFailureDiscardsTheRun) {
  EXPECT_EQ(execute("number", "a\n"), R"({ "1 a\n" })");
  EXPECT_EQ(execute("number", "b\nthrow\nc\n"), R"({ "ERROR: thrown\n" })");
  EXPECT_EQ(status, -1);
  EXPECT_EQ(runsAlive, 0U);
  EXPECT_EQ(complete(), "{}");
  EXPECT_EQ(execute("number", "throw 5\n"),
            R"({ "ERROR: Exception of an unknown type\n" })");
  EXPECT_EQ(execute("number", "throw Poco\n"),
            R"({ "ERROR: Syntax error: no such line\n" })");
  EXPECT_EQ(execute("number", "throw Error\n"),
            R"({ "ERROR: no such line\n" })");
}

TEST_F(PipeCommandTest, MayFailAtTheEnd) {
  execute("number", "throw later\n");
  EXPECT_EQ(complete(), R"({ "ERROR: thrown later\n" })");
  EXPECT_EQ(status, -1);
  EXPECT_EQ(runsAlive, 0U);
  execute("number", "throw");
  EXPECT_EQ(complete(), R"({ "ERROR: thrown\n" })");
  EXPECT_EQ(status, -1);
  EXPECT_EQ(complete(), "{}");
}

// The candidates of Tab and help, as "<text>:<kind>".
TEST_F(PipeCommandTest, IsOfferedWordByWord) {
  constexpr char kAll1[] =
      "--order:1 --step:1 -o:1 -q:1 -s:1 <letter>:1 <cr>:1";
  constexpr char kQuiet1[] = "-q:1 <letter>:1 <cr>:1";
  struct {
    char const* line;
    std::string complete;
    std::string help;
  } const rows[] = {
      {"n", "number:3", "number:3"},
      {"number", "<cr>:2 --order:2 --step:2 -o:2 -q:2 -s:2 <letter>:2",
       "number:3"},
      {"number ", "<cr>:2 --order:1 --step:1 -o:1 -q:1 -s:1 <letter>:1", kAll1},
      {"number -", "--order:1 --step:1 -o:1 -q:1 -s:1 <cr>:1",
       "--order:1 --step:1 -o:1 -q:1 -s:1 <cr>:1"},
      {"number --", "--order:1 --step:1", "--order:1 --step:1"},
      {"number --s", "--step:3", "--step:3"},
      {"number --s ", "", ""},
      {"number --x", "", ""},
      {"number -s", "<step>:2", "-s:1"},
      {"number -S ", "<step>:1", "<step>:1"},
      {"number -s 5", "<space>:1 <cr>:1", "<step>:1 <cr>:1"},
      {"number -s x", "<step>:1 <space>:1", "-s:1 <step>:1"},
      {"number -s x ", "", ""},
      {"number -s 5 ", "--order:1 -o:1 -q:1 <letter>:1 <cr>:1",
       "--order:1 -o:1 -q:1 <letter>:1 <cr>:1"},
      {"number -o", "up:2 down:2", "-o:1"},
      {"number -o ", "up:1 down:1", "up:1 down:1"},
      {"number -o u", "up:3", "up:3"},
      {"number -o UP", "up:3 <cr>:1", "up:3 <cr>:1"},
      {"number -o x", "", ""},
      {"number -o up --step 3 ", kQuiet1, kQuiet1},
      {"number -q", "--order:2 --step:2 -o:2 -s:2 <letter>:2 <cr>:1",
       "-q:1 <cr>:1"},
      {"number a", "<letter>:1 <cr>:1", "<letter>:1 <cr>:1"},
      {"number a ", "--order:1 --step:1 -o:1 -q:1 -s:1 <cr>:1",
       "--order:1 --step:1 -o:1 -q:1 -s:1 <cr>:1"},
      {"number a --o", "--order:3", "--order:3"},
      {"number a b", "", ""},
      {"number a b ", "", ""},
      {"number -x a -", "", ""},
      {"number a -o up -s 3 -q ", "<cr>:1", "<cr>:1"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(offered(row.line, false), row.complete) << row.line;
    EXPECT_EQ(offered(row.line, true), row.help) << row.line;
  }
}

// All lines of up to four of these words. Help and Tab offer "<cr>" if and only
// if the line runs. Once typed, a candidate causes no problem but a missing
// word after it.
TEST_F(PipeCommandTest, OffersOnlyWhatItAccepts) {
  char const* const words[] = {"-s",  "--STEP", "-o", "up", "-q",
                               "--x", "5",      "0",  "a",  "-"};
  std::vector<std::string> lines{"number"};
  for (std::size_t i = 0; i < lines.size() && lines.size() < 11111; ++i) {
    for (char const* word : words) lines.push_back(lines[i] + ' ' + word);
  }
  auto const problem = [&](std::string const& line) {
    std::string const shown = execute(line.c_str(), "");
    std::string result = status == 0 ? "" : shown;
    command->forgetRuns();
    return result;
  };
  for (std::string const& line : lines) {
    std::string const blank = line + ' ';
    for (bool const help : {false, true}) {
      std::istringstream all(offered(blank.c_str(), help));
      bool mayEnd = false;
      for (std::string each; all >> each;) {
        std::string const text = each.substr(0, each.find(':'));
        mayEnd = mayEnd || text == "<cr>";
        if (text.front() == '<') continue;
        std::string const left = problem(blank + text);
        EXPECT_TRUE(left.empty() || left.find("Missing") != std::string::npos)
            << blank << text << ": " << left;
      }
      ASSERT_EQ(mayEnd, problem(line).empty()) << line;
    }
  }
}

class Copy : public LineProcessor {
 public:
  static CommandSyntax syntax() {
    return {
        "copy",
        "Copy lines",
        {{"-f", "--file", "Into a file", Parameter::text("<file>", "A file")},
         {"-i", "", "Ask first"}},
        {Parameter::text("<from>", "A text"),
         Parameter::text("<to>", "Another text").optional()}};
  }
  explicit Copy(Arguments const&) {}
  void line(std::string_view, Printer&) override {}
};

TEST_F(PipeCommandTest, OffersUnusedOptions) {
  auto const copy = makePipeCommand<Copy>();
  copy->addTo(tree);
  struct {
    char const* line;
    std::string offered;
  } const rows[] = {
      {"copy -f -i ", "-i:1 <from>:1"},
      {"copy -i -f --file ", "<from>:1"},
      {"copy - ", "--file:1 -f:1 -i:1 <to>:1 <cr>:1"},
      {"copy - - ", "--file:1 -f:1 -i:1 <cr>:1"},
      {"copy -", "--file:1 -f:1 -i:1 <cr>:1"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(offered(row.line, false), row.offered) << row.line;
    EXPECT_EQ(offered(row.line, true), row.offered) << row.line;
  }
}

// All valid prefixes of lines of up to four of these words. Each word that may
// follow is offered, unless it is an option that has been typed already.
template <class Processor>
void expectOffersWhatMayFollow(PipeCommandTest& test,
                               std::vector<std::string> const& words) {
  CommandSyntax const syntax = Processor::syntax();
  Grammar const grammar(syntax.options, syntax.arguments);
  std::vector<std::vector<std::string>> lines{{syntax.keyword}};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string line;
    for (std::string const& each : lines[i]) line += each + ' ';
    for (std::string const& word : words) {
      std::vector<std::string> longer = lines[i];
      longer.push_back(word);
      auto const roles = grammar.roles(longer);
      if (!grammar.accepts(roles, longer, roles.size())) continue;
      WordRole const& role = roles.back();
      auto const usedBefore = [&](WordRole const& earlier) {
        return role.isOption() && earlier.isOption() &&
               earlier.option == role.option;
      };
      bool const isNamed = role.isOption() || role.parameter->isChoice();
      std::string const text =
          (isNamed ? word : role.parameter->placeholder()) + ':';
      if (std::none_of(roles.begin(), roles.end() - 1, usedBefore)) {
        for (bool const help : {false, true}) {
          std::string const all = ' ' + test.offered(line.c_str(), help);
          ASSERT_NE(all.find(' ' + text), std::string::npos)
              << line << word << ": " << all;
        }
      }
      if (longer.size() < 5) lines.push_back(longer);
    }
  }
  EXPECT_GT(lines.size(), 100U);
}

TEST_F(PipeCommandTest, OffersAllThatMayFollow) {
  auto const copy = makePipeCommand<Copy>();
  copy->addTo(tree);
  expectOffersWhatMayFollow<Copy>(*this, {"-f", "--file", "-i", "-", "a"});
  expectOffersWhatMayFollow<Number>(
      *this, {"-s", "--step", "-o", "up", "-q", "5", "a", "-"});
}

// An earlier completion does not affect what runs.
TEST_F(PipeCommandTest, RunsAfterCompletion) {
  offered("number -s 3 a ", false);
  EXPECT_EQ(execute("number -s 3", "a\n"), R"({ "3 a\n" })");
  EXPECT_EQ(offered("number -q", true), "-q:1 <cr>:1");
}

// An invalid word differs from one that no choice begins with.
TEST_F(PipeCommandTest, OffersNothingAfterAnInvalidWord) {
  struct {
    std::vector<std::string> tokens;
    bool endsWithSpace;
    int status;
  } const rows[] = {
      {{"number", "-o", "x"}, false, 0}, {{"number", "-o", "x"}, true, -1},
      {{"number", "a", "b"}, false, -1}, {{"number", "a", "b"}, true, -1},
      {{"number", "--x"}, false, -1},    {{"number", "-x", "a"}, false, -1},
  };
  CommandSyntax const syntax = Number::syntax();
  Grammar const grammar(syntax.options, syntax.arguments);
  ACOptions node(grammar, syntax.modes, VALIDATION_NONE, true);
  for (auto const& row : rows) {
    LinesOutput output;
    std::vector<AutoCompleteResult> results;
    unsigned pos = 1;
    EXPECT_EQ(node.autoComplete(session.context, row.tokens, "", pos,
                                row.endsWithSpace, false, results, output),
              row.status)
        << testing::PrintToString(row.tokens);
    EXPECT_EQ(pos, row.status == 0 ? 2U : 1U);
    EXPECT_TRUE(results.empty());
  }
}

class Begin : public LineProcessor {
 public:
  static CommandSyntax syntax() {
    CommandSyntax syntax{"begin", "Print from a line on"};
    syntax.arguments = {Parameter::text("<pattern>", "A text")};
    syntax.modes = {7};
    return syntax;
  }
  explicit Begin(Arguments const&) {}
  void line(std::string_view, Printer&) override {}
};

TEST_F(PipeCommandTest, ALineMayNotEndBeforeARequiredArgument) {
  auto const begin = makePipeCommand<Begin>();
  tree.deleteTree();
  begin->addTo(tree);
  EXPECT_EQ(execute("begin x", ""), "no command");
  session.record.mode = QorCliModeEnum_1T{7};
  EXPECT_EQ(execute("begin", ""), "no command");
  EXPECT_EQ(execute("begin x", ""), "{}");
  EXPECT_EQ(offered("begin ", false), "<pattern>:1");
  EXPECT_EQ(offered("begin ", true), "<pattern>:1");
  EXPECT_EQ(offered("begin x ", false), "<cr>:1");
}

}  // namespace
}  // namespace QorCliUtilities
