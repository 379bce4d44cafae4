#ifndef QOR_CLI_ENGINE_SOURCE_COMMANDS_H
#define QOR_CLI_ENGINE_SOURCE_COMMANDS_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"
#include "AutoCompleteTree.h"
#include "calls/Session.h"
#include "commands/CommandNode.h"
#include "commands/SourceCommand.h"
#include "sources/Source.h"

namespace QorCliEngine {

// The engine's own commands, which print the text that a line works on:
//
//   show file PATH, show history, show tree [--dot], show version,
//   run PROGRAM [ARG...], echo TEXT, help [COMMAND], and quit, exit and end
//
// They stand in a command tree, which completes and helps them. One thread.
class SourceCommands {
 public:
  using TextMaker = std::function<std::string()>;

  // What makes the texts that commands print. May throw SourceFailure.
  struct Texts {
    TextMaker help;     // help
    TextMaker history;  // show history
    TextMaker tree;     // show tree
    TextMaker graph;    // show tree --dot
    TextMaker version;  // show version
    // help COMMAND, for the words of the command
    std::function<std::string(std::string const& command)> commandHelp;
    CommandNode::Names commandNames;  // that complete the word after help
  };

  // `session` is not owned.
  SourceCommands(Session& session, Texts const& texts);

  // Whether `word` is the first word of a command, or, with `begun`, the
  // beginning of one: in any letter case. An empty word begins every command.
  bool knows(std::string const& word, bool begun) const;

  // Understands `text` as a command. Throws SourceFailure when it is none.
  std::unique_ptr<Source> prepare(std::string const& text);

  // Appends the candidates for completing or helping `text`. Throws
  // SourceFailure when the text cannot be cut into words.
  void offer(QorCliActionEnum_2T action, std::string const& text,
             std::vector<QorCliUtilities::AutoCompleteResult>& candidates);

 private:
  void addShow(Texts const& texts);
  void addHelp(Texts const& texts);
  void addQuit(char const* word);
  void addText(char const* name,
               std::vector<QorCliUtilities::AutoCompleteNode*>, TextMaker text);
  void add(char const* name, std::vector<QorCliUtilities::AutoCompleteNode*>,
           unsigned wordsBefore, SourceCommand::Maker maker);

  Session& session_;
  std::unique_ptr<Source> made_;  // by the command that is being prepared
  std::vector<std::unique_ptr<SourceCommand>> commands_;
  QorCliUtilities::AutoCompleteTree tree_;
};

}  // namespace QorCliEngine

#endif
