#include "SmallPlugin.h"

namespace {
// Any interface at all, also its own.
QorMgmtSpiInterface_1 const needed{nullptr, nullptr, nullptr};
}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::dependencies[0] = &needed;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() { SmallPlugin::unregisterIt(); }
