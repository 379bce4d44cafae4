#include "plugins/Framework.h"

#include <algorithm>
#include <string_view>

#include "QorReturn.h"

namespace QorCliEngine {
namespace {

constexpr char kVersion[] = "1";
constexpr char kComponentInterface[] = "QorMgmtSpiComponent";
constexpr char kPipeInterface[] = "QorCliApiPipeCommandComponent";

QorReturnT getInterfaceOfFramework(char const* componentName,
                                   char const* interfaceName,
                                   char const* interfaceVersion,
                                   void** interface) {
  return Framework::instance().getInterface(componentName, interfaceName,
                                            interfaceVersion, interface);
}

QorReturnT registerWithFramework(QorMgmtSpiComponent_1* component) {
  return Framework::instance().registerComponent(component);
}

QorReturnT unregisterFromFramework(QorMgmtSpiComponent_1* component) {
  return Framework::instance().unregisterComponent(component);
}

bool isComplete(QorMgmtSpiInterface_1 const& identity) {
  return identity.componentName != nullptr &&
         identity.interfaceName != nullptr &&
         identity.interfaceVersion != nullptr;
}

bool fits(char const* wanted, char const* offered) {
  return wanted == nullptr || std::string_view(wanted) == offered;
}

bool fits(QorMgmtSpiInterface_1 const& wanted,
          QorMgmtSpiInterface_1 const& offered) {
  return fits(wanted.componentName, offered.componentName) &&
         fits(wanted.interfaceName, offered.interfaceName) &&
         fits(wanted.interfaceVersion, offered.interfaceVersion);
}

std::string orAny(char const* text) {
  return text == nullptr ? "any" : '"' + std::string(text) + '"';
}

std::string describe(QorMgmtSpiInterface_1 const& identity) {
  std::string text = "interface " + orAny(identity.interfaceName) +
                     ", version " + orAny(identity.interfaceVersion);
  if (identity.componentName != nullptr) {
    text += ", of component " + orAny(identity.componentName);
  }
  return text;
}

// The entries of a null-terminated list, which may itself be null.
std::vector<QorMgmtSpiInterface_1 const*> entries(
    QorMgmtSpiInterface_1 const* const* list) {
  std::vector<QorMgmtSpiInterface_1 const*> result;
  for (; list != nullptr && *list != nullptr; ++list) result.push_back(*list);
  return result;
}

bool isPipeInterface(QorMgmtSpiInterface_1 const& identity) {
  return fits({nullptr, kPipeInterface, kVersion}, identity);
}

QorCliApiPipeCommandComponent_1 const& pipeFunctions(
    QorMgmtSpiInterface_1 const& identity) {
  return reinterpret_cast<QorCliApiPipeCommandComponent_1 const&>(identity);
}

std::string reasonToRefuseInterface(QorMgmtSpiInterface_1 const& provided,
                                    char const* componentName) {
  if (!isComplete(provided)) {
    return "it provides an interface with an incomplete identity";
  }
  if (!fits(componentName, provided.componentName)) {
    return "it provides an interface in the name of component " +
           orAny(provided.componentName);
  }
  if (isPipeInterface(provided) &&
      (pipeFunctions(provided).useModule == nullptr ||
       pipeFunctions(provided).inputComplete == nullptr)) {
    return "its pipe command interface lacks a function";
  }
  return "";
}

}  // namespace

Framework::Registration::Registration(Framework& framework, Registry registry)
    : framework_(framework) {
  framework_.refusal_.clear();
  if (registry == Registry::kCopies) framework_.registry_ = &framework_.copies_;
  before_ = framework_.registry_->size();
}

Framework::Registration::~Registration() {
  framework_.registry_ = &framework_.components_;
}

Framework::Components Framework::Registration::components() const {
  Components const& all = *framework_.registry_;
  auto const first =
      all.begin() + static_cast<std::ptrdiff_t>(std::min(before_, all.size()));
  return Components(first, all.end());
}

Framework::Framework()
    : offered_{{"qorcli", "QorMwSpiLog", kVersion},
               {"qorcli", "TavMwSpiTrace", kVersion}} {
  accessor_.getPortal = [](char const* version) {
    bool const known = version != nullptr && fits(version, kVersion);
    return known ? &instance().portal_ : nullptr;
  };
  portal_.getInterface = getInterfaceOfFramework;
  portal_.registerComponent = registerWithFramework;
  portal_.unregisterComponent = unregisterFromFramework;
}

std::vector<PipeComponent> Framework::pipeComponents(
    Components const& components) {
  std::vector<PipeComponent> result;
  for (QorMgmtSpiComponent_1 const* component : components) {
    for (auto const* provided : entries(component->providedInterfaces)) {
      if (!isPipeInterface(*provided)) continue;
      result.emplace_back(pipeFunctions(*provided));
    }
  }
  return result;
}

std::string Framework::missingDependency(
    QorMgmtSpiComponent_1 const& component) const {
  for (auto const* dependency : entries(component.dependencies)) {
    if (find(*dependency) == nullptr) return describe(*dependency);
  }
  return "";
}

QorReturnT Framework::getInterface(char const* componentName,
                                   char const* interfaceName,
                                   char const* interfaceVersion,
                                   void** interface) const {
  if (interface == nullptr) return QOR_RETURN_INVALID_ARGUMENT;
  auto const* found = find({componentName, interfaceName, interfaceVersion});
  if (found == nullptr) return QOR_RETURN_NOT_FOUND;
  *interface = const_cast<QorMgmtSpiInterface_1*>(found);
  return QOR_RETURN_SUCCESS;
}

QorReturnT Framework::registerComponent(QorMgmtSpiComponent_1* component) {
  refusal_ = reasonToRefuse(component);
  if (!refusal_.empty()) return QOR_RETURN_INVALID_ARGUMENT;
  registry_->push_back(component);
  return QOR_RETURN_SUCCESS;
}

QorReturnT Framework::unregisterComponent(QorMgmtSpiComponent_1* component) {
  for (Components* registry : {&components_, &copies_}) {
    auto const found = std::find(registry->begin(), registry->end(), component);
    if (found == registry->end()) continue;
    registry->erase(found);
    return QOR_RETURN_SUCCESS;
  }
  return QOR_RETURN_NOT_FOUND;
}

QorMgmtSpiInterface_1 const* Framework::find(
    QorMgmtSpiInterface_1 const& wanted) const {
  for (QorMgmtSpiInterface_1 const& offered : offered_) {
    if (fits(wanted, offered)) return &offered;
  }
  for (QorMgmtSpiComponent_1 const* component : components_) {
    for (auto const* provided : entries(component->providedInterfaces)) {
      if (fits(wanted, *provided)) return provided;
    }
  }
  return nullptr;
}

std::string Framework::reasonToRefuse(
    QorMgmtSpiComponent_1 const* component) const {
  if (component == nullptr) return "it registers no component record";
  if (!isComplete(component->identity)) return "its identity is incomplete";
  if (!fits({nullptr, kComponentInterface, kVersion}, component->identity)) {
    return "its identity is " + describe(component->identity);
  }
  char const* const name = component->identity.componentName;
  for (QorMgmtSpiComponent_1 const* other : components_) {
    if (other == component) return "its record is registered already";
    if (registry_ == &copies_) continue;
    if (fits(name, other->identity.componentName)) {
      return "there is a component " + orAny(name) + " already";
    }
  }
  if (component->start == nullptr || component->stop == nullptr) {
    return "its record lacks a function";
  }
  for (auto const* provided : entries(component->providedInterfaces)) {
    std::string reason = reasonToRefuseInterface(*provided, name);
    if (!reason.empty()) return reason;
  }
  return "";
}

}  // namespace QorCliEngine
