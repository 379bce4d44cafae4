#include "SmallPlugin.h"

namespace {
QorMgmtSpiInterface_1 const needed{"qorcli", "QorMwSpiLog", "2"};
}

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::dependencies[0] = &needed;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() { SmallPlugin::unregisterIt(); }
