#ifndef QOR_CLI_LIBRARY_ENTRY_H
#define QOR_CLI_LIBRARY_ENTRY_H

#include "QorMgmtSpi.h"

// The only symbols that a plug-in exports. It defines both; the framework calls
// them on one thread, never during a call of one of the plug-in's components.
extern "C" {

// Initialises the plug-in, which registers its components with the framework's
// portal. `configuration` may be null. Returns 0 or a framework status code.
__attribute__((visibility("default"))) QorReturnT qorLCMinit(
    QorMgmtSpiInterfacePortalAccessor* accessor, char const* configuration);

// Terminates the plug-in before the library is unloaded, even if it was never
// initialised.
__attribute__((visibility("default"))) void qorLCMterminate();
}

#endif
