#include "SmallPlugin.h"

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  static_cast<void>(accessor);
  return 0;
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() {}
