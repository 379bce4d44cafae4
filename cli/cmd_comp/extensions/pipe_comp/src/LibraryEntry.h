#ifndef QOR_CLI_LIBRARY_ENTRY_H
#define QOR_CLI_LIBRARY_ENTRY_H

#include "QorMgmtSpi.h"

// All that the library exports. See PipeLCM for what the two do; both must be
// called from the same thread, and never while the component is at work.
extern "C" {

// Initialises the plug-in. Returns 0 or a framework status code.
__attribute__((visibility("default"))) QorReturnT qorLCMinit(
    QorMgmtSpiInterfacePortalAccessor* accessor, char const* configuration);

// Terminates the plug-in, before the library is unloaded.
__attribute__((visibility("default"))) void qorLCMterminate();
}

#endif
