#ifndef QOR_CLI_PIPE_COMMAND_CLASS_H
#define QOR_CLI_PIPE_COMMAND_CLASS_H

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "AbstractCommand.h"
#include "AutoCompleteTree.h"
#include "Grammar.h"
#include "LineProcessor.h"

namespace QorCliUtilities {

// The syntax of a pipe command.
struct CommandSyntax {
  std::string keyword;  // one word, typed in any letter case
  std::string help;     // shown beside the keyword
  std::vector<Option> options = {};
  std::vector<Parameter> arguments = {};          // in the order of typing
  std::set<unsigned> modes = {QOR_CLI_MODE_ANY};  // QorCliModeEnum_1T values
};

// A pipe command, defined by its syntax and a function that begins a run. Keeps
// the runs of all actions in progress, by action id. One call at a time.
class PipeCommand : public AbstractCommand {
 public:
  // Begins a run with the arguments of its command line. May throw, which fails
  // the action; must not return null.
  using Begin =
      std::function<std::unique_ptr<TextProcessor>(Arguments const& arguments)>;

  // Throws Error if the grammar is invalid (Grammar.h).
  PipeCommand(CommandSyntax syntax, Begin begin);

  // Adds the command to `tree`, which it must outlive.
  void addTo(AutoCompleteTree& tree);

  // Passes the text in `output`, a chunk of the input, to the run of the
  // context's action, and replaces it by what the run prints. The first chunk
  // of an action, which may be empty, begins the run with the words in
  // `tokens`; later chunks ignore them. A chunk may end within a line.
  //
  // Returns 0. If the words are rejected or the run throws, deletes the run,
  // leaves "ERROR: " and the reason in `output` and returns -1.
  int execute(CliApiContext& context, std::vector<std::string> const& tokens,
              IOutput& output) override;

  // Ends the run of an action, adds what it prints to `output`, and deletes it.
  // Does nothing if the action has no run. Returns 0 or fails as execute()
  // does.
  int complete(unsigned actionId, IOutput& output);

  // Deletes the run of an action, if any, without calling its end().
  void forgetRun(unsigned actionId);

  // Deletes all runs, without calling their end().
  void forgetRuns();

 private:
  struct Run {
    std::unique_ptr<TextProcessor> processor;
    LineCutter cutter;
  };

  template <class Work>
  int perform(unsigned actionId, IOutput& output, Work const& work);
  Run& runOf(unsigned actionId, std::vector<std::string> const& tokens);

  std::string keyword_;
  std::string help_;
  std::set<unsigned> modes_;
  Grammar grammar_;
  Begin begin_;
  std::map<unsigned, Run> runs_;  // by action id
};

// Creates a command whose runs are objects of `Processor`, a TextProcessor with
//
//   static CommandSyntax syntax();
//   explicit Processor(Arguments const& arguments);
template <class Processor>
std::unique_ptr<PipeCommand> makePipeCommand() {
  return std::make_unique<PipeCommand>(
      Processor::syntax(), [](Arguments const& arguments) {
        return std::make_unique<Processor>(arguments);
      });
}

}  // namespace QorCliUtilities

#endif
