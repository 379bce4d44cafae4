#include <stdexcept>

#include "SmallPlugin.h"

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  static_cast<void>(accessor);
  throw std::runtime_error("no memory module");
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() {}
