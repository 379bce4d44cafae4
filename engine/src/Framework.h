#ifndef QOR_CLI_ENGINE_FRAMEWORK_H
#define QOR_CLI_ENGINE_FRAMEWORK_H

#include <string>
#include <vector>

#include "PipeComponent.h"
#include "QorMgmtSpi.h"
#include "QorSingleton.h"

namespace QorCliEngine {

// The framework as plug-ins see it: the portal, and the registry of components
// behind it. There is one in a process, because the portal's functions take no
// record that could tell two apart. One thread.
class Framework : public Qor::Singleton<Framework> {
 public:
  Framework();

  // For qorLCMinit. Valid as long as the process.
  QorMgmtSpiInterfacePortalAccessor* accessor() { return &accessor_; }

  // The components in the order of their registration; not owned.
  std::vector<QorMgmtSpiComponent_1*> const& components() const {
    return components_;
  }

  // The pipe command interfaces of all components, in that order.
  std::vector<PipeComponent> pipeComponents() const;

  // Why the last registration was refused; empty when it was not.
  std::string const& refusal() const { return refusal_; }

  // Names the first dependency of `component` that nothing offers; empty when
  // there is none.
  std::string missingDependency(QorMgmtSpiComponent_1 const& component) const;

  // The portal's functions. QorReturn.h has the codes.
  QorReturnT getInterface(char const* componentName, char const* interfaceName,
                          char const* interfaceVersion, void** interface) const;
  QorReturnT registerComponent(QorMgmtSpiComponent_1* component);
  QorReturnT unregisterComponent(QorMgmtSpiComponent_1* component);

 private:
  QorMgmtSpiInterface_1 const* find(QorMgmtSpiInterface_1 const& wanted) const;
  std::string reasonToRefuse(QorMgmtSpiComponent_1 const* component) const;

  QorMgmtSpiInterfacePortal portal_{};
  QorMgmtSpiInterfacePortalAccessor accessor_{};
  std::vector<QorMgmtSpiInterface_1> offered_;  // by the engine itself
  std::vector<QorMgmtSpiComponent_1*> components_;
  std::string refusal_;
};

}  // namespace QorCliEngine

#endif
