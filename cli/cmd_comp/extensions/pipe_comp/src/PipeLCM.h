#ifndef QOR_CLI_PIPE_LCM_H
#define QOR_CLI_PIPE_LCM_H

#include "FrameworkPortal.h"
#include "QorMgmtSpi.h"
#include "QorSingleton.h"

namespace QorCliPipe {

// The life cycle of the plug-in: one initialisation and one termination for
// each time the library is loaded, both from the same thread and never while
// the component is at work.
class PipeLCM : public Qor::Singleton<PipeLCM> {
 public:
  // Builds the command tree, fetches the framework's portal through `accessor`
  // and registers the component with it. `config` is not read and may be null.
  // Returns 0, the framework's code when it refuses the component (everything
  // built stays), or -1 when the accessor, the portal or one of their functions
  // that is needed is null. After a termination the tree stays empty.
  QorReturnT qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor,
                        char const* config);

  // Empties the command tree and, if there is a portal, takes the component
  // back from it. May be called without an initialisation.
  void qorLCMterminate();

  // The portal, null before qorLCMinit. Owned by the framework.
  QorMgmtSpiInterfacePortal* getPortal() const;

  // Returns the record of functions of an interface of the framework, owned by
  // it, or null when the framework does not know it. Null members of `id` stand
  // for any. To be called after qorLCMinit only.
  void* getInterface(QorMgmtSpiInterface_1 const& id) const;

 private:
  QorCliUtilities::FrameworkPortal portal_;
};

}  // namespace QorCliPipe

#endif
