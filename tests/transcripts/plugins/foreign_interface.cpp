#include "SmallPlugin.h"

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::pipe.identity.componentName = "AnotherComponent";
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() {}
