// A pipe command that prints nothing and tells standard error of every call:
// stages are told of the end of their input in order, also after a failure.

#include <iostream>
#include <string>

#include "SmallPlugin.h"

namespace {

QorReturnT useModule(QorCliApiContext_5*, unsigned action, unsigned actionId,
                     unsigned* matches, char const* commandLine,
                     char const* input) {
  std::string const line = commandLine;
  if (action != QOR_CLI_ACTION_EXECUTE || line.rfind("told", 0) != 0) return 0;
  ++*matches;
  std::cerr << "action " << actionId << ": " << line << ", "
            << std::string(input).size() << " bytes" << std::endl;
  return line == "told-fail" && *input != '\0' ? 1 : 0;
}

QorReturnT inputComplete(QorCliApiContext_5*, unsigned actionId) {
  std::cerr << "action " << actionId << ": input complete" << std::endl;
  return 0;
}

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::component.identity.componentName = "ToldComponent";
  SmallPlugin::pipe.identity.componentName = "ToldComponent";
  SmallPlugin::pipe.useModule = useModule;
  SmallPlugin::pipe.inputComplete = inputComplete;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() { SmallPlugin::unregisterIt(); }
