#include <iostream>

#include "SmallPlugin.h"

namespace {

QorReturnT start(QorStateChangeReason reason) {
  std::cerr << "start " << reason << std::endl;
  return 0;
}

QorReturnT stop(QorStateChangeReason reason) {
  std::cerr << "stop " << reason << std::endl;
  return 0;
}

// Destroyed when the library is unloaded.
struct Unloading {
  ~Unloading() { std::cerr << "unloaded" << std::endl; }
} const unloading;

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  std::cerr << "init" << std::endl;
  SmallPlugin::component.start = start;
  SmallPlugin::component.stop = stop;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() {
  std::cerr << "terminate" << std::endl;
  SmallPlugin::unregisterIt();
}
