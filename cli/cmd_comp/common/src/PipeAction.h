#ifndef QOR_CLI_PIPE_ACTION_H
#define QOR_CLI_PIPE_ACTION_H

#include <string>
#include <vector>

#include "AutoCompleteTree.h"
#include "CliApiContext.h"
#include "LinesOutput.h"
#include "QorTypes.h"

// How a component answers the engine's calls to its pipe commands, in one step
// or, for a component that has something to add, in several. One call at a
// time, as on the tree.
namespace QorCliUtilities {

// What the engine asks for, as it hands it to a component's useModule.
struct PipeAction {
  QorCliActionEnum_2T kind;
  unsigned id;
  unsigned* commandMatchCount;
  char const* commandLine;  // null is read as empty
  char const* input;        // likewise
};

// Whether a call can be answered: the context has a record, and, where the call
// comes with one, there is a counter. If not, an error in the system log says
// so. The default arguments take the place of the caller and are not to be
// given.
bool canAnswer(CliApiContext const& context, unsigned const* commandMatchCount,
               char const* file = __builtin_FILE(),
               char const* function = __builtin_FUNCTION(),
               unsigned line = __builtin_LINE());
bool canAnswer(CliApiContext const& context,
               char const* file = __builtin_FILE(),
               char const* function = __builtin_FUNCTION(),
               unsigned line = __builtin_LINE());

// Answers a call of useModule: checks it, performs the action, and when a
// command was run, emits its output. Returns the status of the tree, or -1 when
// the call cannot be answered. Throws what nodes and commands throw.
int answerPipeAction(AutoCompleteTree& tree, CliApiContext& context,
                     PipeAction const& action,
                     char const* file = __builtin_FILE(),
                     char const* function = __builtin_FUNCTION(),
                     unsigned line = __builtin_LINE());

// Performs `action`, which can be answered, on `tree`, and gives its id to
// `context`.
//
// Executing, `output` receives the input as one string, the command line is
// run, and what the command printed is in `output`. Completing and helping, the
// candidates go to `context`. Other actions do nothing.
//
// Returns the status of the tree: what the command returned, 0 when there was
// no command to run, -1 when the line cannot be cut into words. Throws what
// nodes and commands throw.
int performPipeAction(AutoCompleteTree& tree, CliApiContext& context,
                      PipeAction const& action, LinesOutput& output);

// Hands the strings of `lines` that are not empty to `context`, each with its
// index among all of them: every one, or with a `status` that is not 0 the
// first only, for a command that failed puts its error text first.
void emitOutput(CliApiContext& context, unsigned actionId,
                std::vector<std::string> const& lines, int status);

}  // namespace QorCliUtilities

#endif
