#include "SmallPlugin.h"

namespace {
QorReturnT failToStart(QorStateChangeReason) { return 4; }
}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::component.start = failToStart;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() { SmallPlugin::unregisterIt(); }
