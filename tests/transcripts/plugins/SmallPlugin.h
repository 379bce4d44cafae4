#ifndef QOR_CLI_TESTS_SMALL_PLUGIN_H
#define QOR_CLI_TESTS_SMALL_PLUGIN_H

#include "QorCliPipeCommand.h"
#include "QorMgmtSpi.h"

// What every small plug-in of the transcripts is made of: one component with
// one pipe command interface. A plug-in changes what makes it special before it
// registers it. To be used by one translation unit of a plug-in only.
namespace SmallPlugin {

inline QorReturnT succeed(QorStateChangeReason) { return 0; }

inline QorReturnT knowNothing(QorCliApiContext_5*, unsigned, unsigned,
                              unsigned*, char const*, char const*) {
  return 0;
}

inline char const* name() { return "small"; }

inline QorReturnT ignoreEnd(QorCliApiContext_5*, unsigned) { return 0; }

inline QorCliApiPipeCommandComponent_1 pipe{
    {"SmallComponent", "QorCliApiPipeCommandComponent", "1"},
    knowNothing,
    name,
    ignoreEnd};
inline QorMgmtSpiInterface_1 const* provided[] = {&pipe.identity, nullptr};
inline QorMgmtSpiInterface_1 const* dependencies[] = {nullptr, nullptr};
inline QorMgmtSpiComponent_1 component{
    {"SmallComponent", "QorMgmtSpiComponent", "1"},
    provided,
    dependencies,
    succeed,
    succeed};
inline QorMgmtSpiInterfacePortal* portal = nullptr;

inline QorReturnT registerIt(QorMgmtSpiInterfacePortalAccessor* accessor) {
  portal = accessor->getPortal("1");
  return portal->registerComponent(&component);
}

inline void unregisterIt() { portal->unregisterComponent(&component); }

}  // namespace SmallPlugin

#define SMALL_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

#endif
