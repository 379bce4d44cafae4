#include "SmallPlugin.h"

namespace {
QorReturnT throwAtStop(QorStateChangeReason) { throw 1; }
}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::component.stop = throwAtStop;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() {}
