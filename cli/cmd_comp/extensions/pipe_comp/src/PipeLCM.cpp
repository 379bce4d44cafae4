#include "PipeLCM.h"

#include "FilterCommand.h"
#include "OperationTrace.h"
#include "PipeCmdComp.h"
#include "PipeCmdTree.h"

namespace QorCliPipe {

using QorCliUtilities::OperationTrace;

QorReturnT PipeLCM::qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor,
                               char const*) {
  OperationTrace const trace;
  QOR_CLI_TRACE("Inside PipeLCM::QorReturnT qorLCMinit ");
  FilterCommand::instance();
  QorReturnT const fetched = portal_.fetch(accessor);
  if (fetched != 0) return trace.exitWith(fetched);
  QorReturnT const status =
      portal_.registerComponent(PipeCmdComp::instance().getComponent());
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
  if (portal_.get() != nullptr) {
    portal_.unregisterComponent(PipeCmdComp::instance().getComponent());
  }
  trace.exit();
}

QorMgmtSpiInterfacePortal* PipeLCM::getPortal() const {
  return OperationTrace().exitWith(portal_.get());
}

void* PipeLCM::getInterface(QorMgmtSpiInterface_1 const& id) const {
  OperationTrace const trace;
  void* interface = nullptr;
  QorReturnT const status = portal_.get()->getInterface(
      id.componentName, id.interfaceName, id.interfaceVersion, &interface);
  return trace.exitWith(status == 0 ? interface : nullptr);
}

}  // namespace QorCliPipe
