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
// it. Trees refer to commands and never own them: a command outlives every tree
// that it stands in. One call at a time.
class AbstractCommand {
 public:
  // `name` is the command's display name; it is copied and must not be null.
  explicit AbstractCommand(char const* name);
  virtual ~AbstractCommand() = default;

  // Runs execute() and then sends a prompt that is waiting in the context.
  // Returns what execute() returned. Throws Error "Unable to set prompt" when
  // the prompt cannot be sent; the command has run then. Not meant to be
  // overridden.
  virtual int executeVerbose(CliApiContext& context,
                             std::vector<std::string> const& tokens,
                             IOutput& output);

  // Does the command's work. `tokens` is the whole line, the command's own
  // words included; what the command prints goes to `output`. Returns 0 on
  // success; by convention -1 on failure.
  virtual int execute(CliApiContext& context,
                      std::vector<std::string> const& tokens,
                      IOutput& output) = 0;

  // Whether the session in `context` may run the command: everybody, in the
  // base class.
  virtual bool isAuthorized(CliApiContext& context);

  // The display name, valid as long as the command.
  char const* name() const;

 private:
  std::string name_;
};

}  // namespace QorCliUtilities

#endif
