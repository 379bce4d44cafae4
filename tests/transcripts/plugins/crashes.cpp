// Crashes where it is asked to: while it runs, or completes; or prints its
// input and interrupts the engine.

#include <csignal>
#include <cstdlib>
#include <string>

#include "SmallPlugin.h"

namespace {

// Takes stack until there is none left.
int overflow(int depth) {
  volatile char room[4096] = {};
  room[0] = static_cast<char>(depth);
  return depth < 0 ? 0 : overflow(depth + 1) + room[0];
}

QorReturnT useModule(QorCliApiContext_5* context, unsigned action,
                     unsigned actionId, unsigned* matches,
                     char const* commandLine, char const* input) {
  std::string const line = commandLine;
  bool const runs = action == QOR_CLI_ACTION_EXECUTE;
  if (runs && line == "crash") {
    ++*matches;
    if (*input != '\0') std::raise(SIGSEGV);
  }
  if (runs && line == "interrupt") {
    ++*matches;
    context->setOutput(context, 0, 1, actionId, input);
    if (*input != '\0') std::raise(SIGINT);
  }
  if (runs) return 0;
  if (line == "crash ") std::raise(SIGSEGV);
  if (line == "abort ") std::abort();
  return line == "overflow " ? overflow(0) : 0;
}

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::pipe.useModule = useModule;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() { SmallPlugin::unregisterIt(); }
