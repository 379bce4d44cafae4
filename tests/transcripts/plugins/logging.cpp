// Pipe commands that log errors, and fail or do not; and a component that logs
// one when it begins and one when it ends.

#include <stdexcept>
#include <string>

#include "QorLoggingWrapper.h"
#include "SmallPlugin.h"

namespace {

constexpr unsigned kError = 4;

void log(char const* text) {
  Qor::LoggingWrapper& facade = Qor::LoggingWrapper::instance();
  if (facade.get_level() < kError) return;
  facade.log_printf(Qor::Trace::Cli, kError, "logging.cpp", "log", 1, "%s",
                    text);
}

unsigned oddAtEnd = 0;  // action id

QorReturnT useModule(QorCliApiContext_5*, unsigned action, unsigned actionId,
                     unsigned* matches, char const* commandLine,
                     char const* input) {
  std::string const command = commandLine;
  if (action != QOR_CLI_ACTION_EXECUTE || command.rfind("log-", 0) != 0) {
    return 0;
  }
  ++*matches;
  if (command == "log-at-end") oddAtEnd = actionId;
  if (*input == '\0' || command == "log-at-end") return 0;
  log("Something is odd.");
  if (command == "log-error") return 0;
  log("It is broken.");
  if (command == "log-twice") return 1;
  throw std::runtime_error("it is on fire");
}

QorReturnT inputComplete(QorCliApiContext_5*, unsigned actionId) {
  if (actionId == oddAtEnd) log("The end is odd.");
  return 0;
}

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  log("Begins.");
  SmallPlugin::component.identity.componentName = "LoggingComponent";
  SmallPlugin::pipe.identity.componentName = "LoggingComponent";
  SmallPlugin::pipe.useModule = useModule;
  SmallPlugin::pipe.inputComplete = inputComplete;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() {
  log("Ends.");
  SmallPlugin::unregisterIt();
}
