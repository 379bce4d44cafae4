#include "PipeLCM.h"

#include "FilterCommand.h"
#include "OperationTrace.h"
#include "PipeCmdComp.h"
#include "PipeCmdTree.h"

namespace QorCliPipe {
namespace {

constexpr char kPortalVersion[] = "1";
constexpr QorReturnT kRefused = -1;

}  // namespace

using QorCliUtilities::OperationTrace;

QorReturnT PipeLCM::qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor,
                               char const*) {
  OperationTrace const trace;
  QOR_CLI_TRACE("Inside PipeLCM::QorReturnT qorLCMinit ");
  FilterCommand::instance();
  if (accessor == nullptr || accessor->getPortal == nullptr) {
    QOR_CLI_LOG_ERROR("No portal accessor.");
    return trace.exitWith(kRefused);
  }
  portal_ = accessor->getPortal(kPortalVersion);
  if (portal_ == nullptr || portal_->registerComponent == nullptr) {
    QOR_CLI_LOG_ERROR("No interface portal.");
    return trace.exitWith(kRefused);
  }
  QorReturnT const status =
      portal_->registerComponent(PipeCmdComp::instance().getComponent());
  if (status != 0) {
    QOR_CLI_LOG_ERROR("Could not register Pipe Command component.");
    QOR_CLI_TRACE("Could not register Pipe Command component.");
    return trace.exitWith(status);
  }
  QOR_CLI_TRACE(
      "Inside PipeLCM::QorReturnT register Pipe Command component success ");
  return trace.exitWith(0);
}

void PipeLCM::qorLCMterminate() {
  OperationTrace const trace;
  PipeCmdTree::instance().deleteTree();
  if (portal_ != nullptr && portal_->unregisterComponent != nullptr) {
    portal_->unregisterComponent(PipeCmdComp::instance().getComponent());
  }
  trace.exit();
}

QorMgmtSpiInterfacePortal* PipeLCM::getPortal() const {
  return OperationTrace().exitWith(portal_);
}

void* PipeLCM::getInterface(QorMgmtSpiInterface_1 const& id) const {
  OperationTrace const trace;
  void* interface = nullptr;
  QorReturnT const status = portal_->getInterface(
      id.componentName, id.interfaceName, id.interfaceVersion, &interface);
  return trace.exitWith(status == 0 ? interface : nullptr);
}

}  // namespace QorCliPipe
