#ifndef QOR_CLI_LIBRARY_ENTRY_H
#define QOR_CLI_LIBRARY_ENTRY_H

#include "QorMgmtSpi.h"

// All that a plug-in exports. A plug-in defines both; the framework calls them
// from one thread, and never while a component of the plug-in is at work.
extern "C" {

// Initialises the plug-in, which registers its components with the framework's
// portal. `configuration` may be null. Returns 0 or a framework status code.
__attribute__((visibility("default"))) QorReturnT qorLCMinit(
    QorMgmtSpiInterfacePortalAccessor* accessor, char const* configuration);

// Terminates the plug-in, before the library is unloaded; also when it was
// never initialised.
__attribute__((visibility("default"))) void qorLCMterminate();
}

#endif
