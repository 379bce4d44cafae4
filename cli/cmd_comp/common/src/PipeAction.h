#ifndef QOR_CLI_PIPE_ACTION_H
#define QOR_CLI_PIPE_ACTION_H

#include <string>
#include <vector>

#include "AutoCompleteTree.h"
#include "CliApiContext.h"
#include "LinesOutput.h"
#include "QorTypes.h"

// Answers the engine's calls of a component's pipe commands, in one step or,
// for components with steps of their own, in several. One call at a time, as on
// the tree.
namespace QorCliUtilities {

// The arguments of a call of a component's useModule.
struct PipeAction {
  QorCliActionEnum_2T kind;
  unsigned id;
  unsigned* commandMatchCount;
  char const* commandLine;  // null means empty
  char const* input;        // null means empty
};

// Whether a call can be answered: the context has a record and the counter, if
// the call takes one, is not null. If not, logs an error. The last three
// arguments default to the caller's position and must not be passed.
bool canAnswer(CliApiContext const& context, unsigned const* commandMatchCount,
               char const* file = __builtin_FILE(),
               char const* function = __builtin_FUNCTION(),
               unsigned line = __builtin_LINE());
bool canAnswer(CliApiContext const& context,
               char const* file = __builtin_FILE(),
               char const* function = __builtin_FUNCTION(),
               unsigned line = __builtin_LINE());

// Answers a call of useModule: checks it, performs the action and, if a command
// was run, emits its output. Returns the status of the tree, or -1 if the call
// cannot be answered. Throws what nodes and commands throw.
int answerPipeAction(AutoCompleteTree& tree, CliApiContext& context,
                     PipeAction const& action,
                     char const* file = __builtin_FILE(),
                     char const* function = __builtin_FUNCTION(),
                     unsigned line = __builtin_LINE());

// Performs `action`, for which canAnswer() is true, on `tree`, and sets the
// action id of `context`.
//
// To execute, places the input in `output` as one string and runs the command
// line, which replaces it by its output. For completion and help, sends the
// candidates to `context`. Ignores other actions.
//
// Returns the status of the tree: the command's result, 0 if no command
// matched, -1 if the line cannot be tokenized. Throws what nodes and commands
// throw.
int performPipeAction(AutoCompleteTree& tree, CliApiContext& context,
                      PipeAction const& action, LinesOutput& output);

// Sends the non-empty strings of `lines` to `context`, each with its index in
// `lines`: all of them if `status` is 0, otherwise only the first, which is the
// error text of the failed command.
void emitOutput(CliApiContext& context, unsigned actionId,
                std::vector<std::string> const& lines, int status);

}  // namespace QorCliUtilities

#endif
