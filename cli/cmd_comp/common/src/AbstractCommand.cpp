#include "AbstractCommand.h"

#include "Error.h"
#include "OperationTrace.h"

namespace QorCliUtilities {

AbstractCommand::AbstractCommand(char const* name) : name_(name) {}

int AbstractCommand::executeVerbose(CliApiContext& context,
                                    std::vector<std::string> const& tokens,
                                    IOutput& output) {
  OperationTrace const trace;
  int const result = execute(context, tokens, output);
  if (context.setPrompt() != 0) throw Error("Unable to set prompt", 0);
  return trace.exitWith(result);
}

bool AbstractCommand::isAuthorized(CliApiContext&) {
  return OperationTrace().exitWith(true);
}

char const* AbstractCommand::name() const {
  return OperationTrace().exitWith(name_.c_str());
}

}  // namespace QorCliUtilities
