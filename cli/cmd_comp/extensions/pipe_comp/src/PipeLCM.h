#ifndef QOR_CLI_PIPE_LCM_H
#define QOR_CLI_PIPE_LCM_H

#include "FrameworkPortal.h"
#include "QorMgmtSpi.h"
#include "QorSingleton.h"

namespace QorCliPipe {

// The life cycle of the plug-in: initialised and terminated once each time the
// library is loaded, on the same thread and never during a call of the
// component.
class PipeLCM : public Qor::Singleton<PipeLCM> {
 public:
  // Builds the command tree, fetches the framework's portal through `accessor`
  // and registers the component. `config` is ignored and may be null. Returns
  // 0, the framework's status if it rejects the component (nothing is undone),
  // or -1 if the accessor, the portal or one of their required functions is
  // null. After a termination, the tree stays empty.
  QorReturnT qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor,
                        char const* config);

  // Empties the command tree and unregisters the component, if there is a
  // portal. May be called without an initialisation.
  void qorLCMterminate();

  // The portal, null before qorLCMinit. Owned by the framework.
  QorMgmtSpiInterfacePortal* getPortal() const;

  // Returns the function record of a framework interface, owned by the
  // framework, or null if there is none. Null members of `id` match anything.
  // Requires that qorLCMinit has fetched the portal.
  void* getInterface(QorMgmtSpiInterface_1 const& id) const;

 private:
  QorCliUtilities::FrameworkPortal portal_;
};

}  // namespace QorCliPipe

#endif
