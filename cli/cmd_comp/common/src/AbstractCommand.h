#ifndef QOR_CLI_ABSTRACT_COMMAND_H
#define QOR_CLI_ABSTRACT_COMMAND_H

#include <string>
#include <vector>

#include "CliApiContext.h"
#include "IOutput.h"

namespace QorCliUtilities {

// What runs when a command line ends at a node of a command tree.
//
// A subclass implements execute(), and isAuthorized() if not everybody may run
// it. Trees do not own commands: a command outlives every tree that contains
// it. One call at a time.
class AbstractCommand {
 public:
  // `name` is the command's display name; it is copied and must not be null.
  explicit AbstractCommand(char const* name);
  virtual ~AbstractCommand() = default;

  // Runs execute(), then sends the context's pending prompt, if any. Returns
  // the result of execute(). Throws Error "Unable to set prompt" when the
  // prompt cannot be sent, after the command has run. Not meant to be
  // overridden.
  virtual int executeVerbose(CliApiContext& context,
                             std::vector<std::string> const& tokens,
                             IOutput& output);

  // Does the command's work. `tokens` is the whole line, including the
  // command's own words; output goes to `output`. Returns 0 on success and, by
  // convention, -1 on failure.
  virtual int execute(CliApiContext& context,
                      std::vector<std::string> const& tokens,
                      IOutput& output) = 0;

  // Whether the session in `context` may run the command. The base class always
  // returns true.
  virtual bool isAuthorized(CliApiContext& context);

  // The display name, valid for the lifetime of the command.
  char const* name() const;

 private:
  std::string name_;
};

}  // namespace QorCliUtilities

#endif
