// A pipe command whose name is the beginning of others, and which it offers
// nowhere.

#include <string>

#include "SmallPlugin.h"

namespace {

QorReturnT useModule(QorCliApiContext_5* context, unsigned action,
                     unsigned actionId, unsigned* matches,
                     char const* commandLine, char const* input) {
  if (action != QOR_CLI_ACTION_EXECUTE || std::string(commandLine) != "f") {
    return 0;
  }
  ++*matches;
  if (*input == '\0') return 0;
  return context->setOutput(context, 0, 1, actionId, "the short one");
}

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::component.identity.componentName = "ShortComponent";
  SmallPlugin::pipe.identity.componentName = "ShortComponent";
  SmallPlugin::pipe.useModule = useModule;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() { SmallPlugin::unregisterIt(); }
