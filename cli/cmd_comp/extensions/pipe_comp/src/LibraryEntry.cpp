#include "LibraryEntry.h"

#include "PipeLCM.h"

QorReturnT qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor,
                      char const* configuration) {
  return QorCliPipe::PipeLCM::instance().qorLCMinit(accessor, configuration);
}

void qorLCMterminate() { QorCliPipe::PipeLCM::instance().qorLCMterminate(); }
