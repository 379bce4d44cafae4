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

// How a pipe command is typed.
struct CommandSyntax {
  std::string keyword;
  std::string help;
  std::vector<Option> options = {};
  std::vector<Parameter> arguments = {};
  std::set<unsigned> modes = {QOR_CLI_MODE_ANY};
};

// A pipe command, made of its syntax and a function that begins a run. It keeps
// the runs of the actions under way, by action id. One call at a time.
class PipeCommand : public AbstractCommand {
 public:
  // Begins a run, with the arguments of its command line. May throw, which
  // fails the action; must not return null.
  using Begin =
      std::function<std::unique_ptr<TextProcessor>(Arguments const& arguments)>;

  PipeCommand(CommandSyntax syntax, Begin begin);

  // Adds the command to `tree`, which it must outlive.
  void addTo(AutoCompleteTree& tree);

  // Replaces the text in `output`, a chunk of an action's input, by what the
  // run of the context's action makes of it. The first chunk of an action,
  // which may be empty, begins its run, with the words in `tokens`; those that
  // come with the others are not read. A chunk may end anywhere in a line.
  //
  // Returns 0. When the words are rejected or the run throws, deletes the run,
  // leaves "ERROR: " and the reason in `output` and returns -1.
  int execute(CliApiContext& context, std::vector<std::string> const& tokens,
              IOutput& output) override;

  // Adds to `output` what the run of an action prints at the end of its input,
  // and deletes the run. Does nothing when the action has none. Returns as
  // execute().
  int complete(unsigned actionId, IOutput& output);

  // Deletes the run of an action, if it has one, without calling its end().
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

// Makes a command whose runs are objects of `Processor`, a TextProcessor that
// has
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
