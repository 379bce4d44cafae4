#ifndef QOR_CLI_FRAMEWORK_PORTAL_H
#define QOR_CLI_FRAMEWORK_PORTAL_H

#include "QorMgmtSpi.h"

namespace QorCliUtilities {

// The framework's portal, with which a plug-in registers and unregisters its
// components. Fetched once, when the plug-in is initialised.
//
// The framework owns the portal. Used only on the thread that initialises and
// terminates the plug-in.
class FrameworkPortal {
 public:
  // Fetches the portal. Returns 0, or -1 with an error in the system log if the
  // accessor, the portal or one of their required functions is null.
  QorReturnT fetch(QorMgmtSpiInterfacePortalAccessor* accessor);

  // Registers `component`, whose record must stay valid until it is
  // unregistered. Requires a successful fetch(). Returns the framework's
  // status.
  QorReturnT registerComponent(QorMgmtSpiComponent_1* component) const;

  // Unregisters `component`, even if it was never registered. Does nothing
  // without a portal.
  void unregisterComponent(QorMgmtSpiComponent_1* component) const;

  // The portal, null before fetch().
  QorMgmtSpiInterfacePortal* get() const { return portal_; }

 private:
  QorMgmtSpiInterfacePortal* portal_ = nullptr;
};

}  // namespace QorCliUtilities

#endif
