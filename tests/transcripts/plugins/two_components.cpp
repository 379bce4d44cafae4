// Two components in one plug-in, which say when they are started and stopped.

#include <iostream>

#include "SmallPlugin.h"

namespace {

template <char Name>
QorReturnT start(QorStateChangeReason) {
  std::cerr << "start " << Name << std::endl;
  return 0;
}

template <char Name>
QorReturnT stop(QorStateChangeReason) {
  std::cerr << "stop " << Name << std::endl;
  return 0;
}

QorMgmtSpiInterface_1 const* nothing[] = {nullptr};

QorMgmtSpiComponent_1 components[] = {
    {{"FirstComponent", "QorMgmtSpiComponent", "1"},
     nothing,
     nullptr,
     start<'1'>,
     stop<'1'>},
    {{"SecondComponent", "QorMgmtSpiComponent", "1"},
     nothing,
     nullptr,
     start<'2'>,
     stop<'2'>}};

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::portal = accessor->getPortal("1");
  for (QorMgmtSpiComponent_1& component : components) {
    SmallPlugin::portal->registerComponent(&component);
  }
  return 0;
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() {
  for (QorMgmtSpiComponent_1& component : components) {
    SmallPlugin::portal->unregisterComponent(&component);
  }
}
