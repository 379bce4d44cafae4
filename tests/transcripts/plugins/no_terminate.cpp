#include "SmallPlugin.h"

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  return SmallPlugin::registerIt(accessor);
}
