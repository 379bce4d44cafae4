#ifndef QOR_CLI_FRAMEWORK_PORTAL_H
#define QOR_CLI_FRAMEWORK_PORTAL_H

#include "QorMgmtSpi.h"

namespace QorCliUtilities {

// The framework's portal, through which a plug-in registers its components and
// unregisters them. Fetched once, when the plug-in is initialised.
//
// The portal belongs to the framework. To be used from the thread that
// initialises and terminates the plug-in.
class FrameworkPortal {
 public:
  // Fetches the portal. Returns 0, or -1, with an error in the system log, when
  // the accessor, the portal or a function that is needed of them is null.
  QorReturnT fetch(QorMgmtSpiInterfacePortalAccessor* accessor);

  // Registers `component`, whose record must stay valid until it is
  // unregistered. To be called after fetch() has returned 0 only. Returns what
  // the framework returned.
  QorReturnT registerComponent(QorMgmtSpiComponent_1* component) const;

  // Unregisters `component`, whether it was registered or not. Does nothing
  // without a portal.
  void unregisterComponent(QorMgmtSpiComponent_1* component) const;

  // The portal, null before fetch().
  QorMgmtSpiInterfacePortal* get() const { return portal_; }

 private:
  QorMgmtSpiInterfacePortal* portal_ = nullptr;
};

}  // namespace QorCliUtilities

#endif
