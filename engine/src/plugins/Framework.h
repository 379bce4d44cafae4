#ifndef QOR_CLI_ENGINE_FRAMEWORK_H
#define QOR_CLI_ENGINE_FRAMEWORK_H

#include <cstddef>
#include <string>
#include <vector>

#include "QorMgmtSpi.h"
#include "QorSingleton.h"
#include "plugins/PipeComponent.h"

namespace QorCliEngine {

// The framework as plug-ins see it: the portal, and the registry of components
// after it. There is one in a process, because the portal's functions take no
// record that could tell two apart. One thread.
class Framework : public Qor::Singleton<Framework> {
 public:
  using Components = std::vector<QorMgmtSpiComponent_1*>;

  // Where components are registered: those that all plug-ins find, each by its
  // name; or those of a plug-in's further instances, which have the names of
  // the first one's and are found by nobody.
  enum class Registry { kComponents, kCopies };

  // While it exists, components are registered in a registry of the
  // framework's; otherwise it is kComponents. At first, there is no refusal.
  // Not to be nested.
  class Registration {
   public:
    // `framework` is not owned.
    Registration(Framework& framework, Registry registry);
    ~Registration();
    Registration(Registration const&) = delete;
    Registration& operator=(Registration const&) = delete;

    // What has been registered and not unregistered, in order; not owned.
    Components components() const;

   private:
    Framework& framework_;
    std::size_t before_;
  };

  Framework();

  // For qorLCMinit. Valid as long as the process.
  QorMgmtSpiInterfacePortalAccessor* accessor() { return &accessor_; }

  // The components in the order of their registration; not owned.
  Components const& components() const { return components_; }

  // The pipe command interfaces of all components, in that order.
  std::vector<PipeComponent> pipeComponents() const {
    return pipeComponents(components_);
  }

  // The pipe command interfaces of some components.
  static std::vector<PipeComponent> pipeComponents(
      Components const& components);

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
  Components components_;
  Components copies_;
  Components* registry_ = &components_;  // that is registered in
  std::string refusal_;
};

}  // namespace QorCliEngine

#endif
