#include "commands/SourceCommands.h"

#include <Poco/String.h>

#include <utility>

#include "ACKeyword.h"
#include "CliApiContext5.h"
#include "LinesOutput.h"
#include "calls/CallContext.h"
#include "commands/ArgumentsNode.h"
#include "commands/CommandLine.h"
#include "commands/PathNode.h"
#include "commands/ProgramNode.h"
#include "sources/FileSource.h"
#include "sources/FilesSource.h"
#include "sources/ProcessSource.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

using QorCliUtilities::ACKeyword;
using QorCliUtilities::AutoCompleteNode;
using QorCliUtilities::LinesOutput;
using Count = ArgumentsNode::Count;

constexpr char kBadQuotes[] =
    "quoted text must stand alone, with blanks around it";

constexpr char kShowHelp[] = "Print something that can be piped";
constexpr char kTreeHelp[] = "Draw all commands as a tree";
constexpr char kDotHelp[] = "Draw a graph, in the language of Graphviz";

enum class Ends { kHere, kLater };

AutoCompleteNode* keyword(char const* word, char const* help, Ends ends) {
  return new ACKeyword(word, help, {QOR_CLI_MODE_ANY}, ends == Ends::kHere,
                       false, QOR_CLI_TOKEN_NEXT_WORD, false, true, false,
                       false, false);
}

// An option that ends its command.
AutoCompleteNode* option(char const* word, char const* help) {
  return new ACKeyword(word, help, {QOR_CLI_MODE_ANY}, true, false,
                       QOR_CLI_TOKEN_NEXT_WORD, true, true, false, false,
                       false);
}

std::string joined(std::vector<std::string> words) {
  for (std::string& word : words) word = CommandLine::unquoted(word);
  return Poco::cat(std::string(" "), words.begin(), words.end());
}

// A path in quotes is that of a file, whatever characters it has.
std::unique_ptr<Source> makeFileSource(std::vector<std::string> const& words) {
  if (words.size() != 1) {
    throw SourceFailure("takes one path; quote it if it holds blanks");
  }
  std::string const& word = words.front();
  std::string const path = PathNode::pathIn(word);
  bool const isPattern =
      word.front() != '"' && word.find_first_of("*?[") != std::string::npos;
  if (isPattern) return std::make_unique<FilesSource>(path);
  return std::make_unique<FileSource>(path);
}

// A text that is made when the line runs, not when it is understood: Tab and
// "?" only ask whether it may run.
class TextSource : public Source {
 public:
  explicit TextSource(std::function<std::string()> make)
      : make_(std::move(make)) {}

  State read(LineChunker& chunker) override {
    chunker.append(make_());
    return State::kEnd;
  }

 private:
  std::function<std::string()> make_;
};

// Ends the session when the line runs, not when it is understood.
class QuitSource : public Source {
 public:
  explicit QuitSource(Session& session) : session_(session) {}
  void start() override { session_.shutDown(); }
  State read(LineChunker&) override { return State::kEnd; }

 private:
  Session& session_;
};

}  // namespace

SourceCommands::SourceCommands(Session& session, Texts const& texts)
    : session_(session) {
  using Words = std::vector<std::string>;
  addShow(texts);
  add("Run",
      {keyword("run", "Run a program and print its output", Ends::kLater),
       new ProgramNode(1, Count::kMany, "<program>",
                       "The program and its arguments")},
      1, [](Words words) {
        for (std::string& word : words) word = ProgramNode::argumentIn(word);
        return std::make_unique<ProcessSource>(words);
      });
  add("Echo",
      {keyword("echo", "Print a text", Ends::kLater),
       new ArgumentsNode(1, Count::kMany, "<text>", "The text to print")},
      1, [](Words const& words) {
        return std::make_unique<TextSource>(
            [text = joined(words) + '\n'] { return text; });
      });
  addHelp(texts);
  for (char const* word : {"quit", "exit", "end"}) addQuit(word);
}

void SourceCommands::addShow(Texts const& texts) {
  auto const show = [] { return keyword("show", kShowHelp, Ends::kLater); };
  auto const tree = [] { return keyword("tree", kTreeHelp, Ends::kHere); };
  add("Show file",
      {show(), keyword("file", "Print a file", Ends::kLater),
       new PathNode(2, Count::kOne, "<path>", "The file to print")},
      2, makeFileSource);
  addText("Show history",
          {show(),
           keyword("history", "Print the lines that were typed", Ends::kHere)},
          texts.history);
  addText("Show tree", {show(), tree()}, texts.tree);
  addText("Show tree as graph", {show(), tree(), option("--dot", kDotHelp)},
          texts.graph);
  addText(
      "Show version",
      {show(), keyword("version", "Print the engine's version", Ends::kHere)},
      texts.version);
}

void SourceCommands::addHelp(Texts const& texts) {
  auto const help = [] {
    return keyword("help", "List all commands, or explain one", Ends::kHere);
  };
  addText("Help", {help()}, texts.help);
  add("Help with a command",
      {help(), new CommandNode(1, "<command>", "The command to explain",
                               texts.commandNames)},
      1, [make = texts.commandHelp](std::vector<std::string> const& words) {
        // At once, so that what is no command is not understood.
        return std::make_unique<TextSource>(
            [text = make(joined(words))] { return text; });
      });
}

void SourceCommands::addQuit(char const* word) {
  add("Quit", {keyword(word, "Leave", Ends::kHere)}, 1,
      [this](std::vector<std::string> const&) {
        return std::make_unique<QuitSource>(session_);
      });
}

bool SourceCommands::knows(std::string const& word, bool begun) const {
  for (AutoCompleteNode const* node : tree_.getRoot()->children()) {
    if (!AutoCompleteNode::match(node->keyword(), word)) continue;
    if (begun || node->keyword().size() == word.size()) return true;
  }
  return false;
}

std::unique_ptr<Source> SourceCommands::prepare(std::string const& text) {
  CallContext call(session_);
  QorCliUtilities::CliApiContext5 context(call.record());
  LinesOutput output;
  unsigned matches = 0;
  int const status = tree_.executeCommand(context, text, &matches, output);
  if (matches != 0) return std::move(made_);
  throw SourceFailure(status == 0 ? "unknown or incomplete command"
                                  : kBadQuotes);
}

void SourceCommands::offer(
    QorCliActionEnum_2T action, std::string const& text,
    std::vector<QorCliUtilities::AutoCompleteResult>& candidates) {
  CallContext call(session_);
  QorCliUtilities::CliApiContext5 context(call.record());
  LinesOutput output;
  std::size_t const before = candidates.size();
  int const status = tree_.helpRequestAndAutoCompleteCommand(
      context, text, "", candidates, output, action == QOR_CLI_ACTION_HELP);
  if (status < 0 && candidates.size() == before) {
    throw SourceFailure(kBadQuotes);
  }
}

void SourceCommands::addText(char const* name,
                             std::vector<AutoCompleteNode*> path,
                             TextMaker text) {
  add(name, std::move(path), 1,
      [text = std::move(text)](std::vector<std::string> const&) {
        return std::make_unique<TextSource>(text);
      });
}

void SourceCommands::add(char const* name, std::vector<AutoCompleteNode*> path,
                         unsigned wordsBefore, SourceCommand::Maker maker) {
  commands_.push_back(std::make_unique<SourceCommand>(name, wordsBefore,
                                                      std::move(maker), made_));
  path.push_back(new AutoCompleteNode(commands_.back().get()));
  tree_.addPathToTree(path);
}

}  // namespace QorCliEngine
