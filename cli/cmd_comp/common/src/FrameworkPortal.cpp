#include "FrameworkPortal.h"

#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

constexpr char kPortalVersion[] = "1";
constexpr QorReturnT kRejected = -1;

}  // namespace

QorReturnT FrameworkPortal::fetch(QorMgmtSpiInterfacePortalAccessor* accessor) {
  if (accessor == nullptr || accessor->getPortal == nullptr) {
    QOR_CLI_LOG_ERROR("No portal accessor.");
    return kRejected;
  }
  portal_ = accessor->getPortal(kPortalVersion);
  if (portal_ == nullptr || portal_->registerComponent == nullptr) {
    QOR_CLI_LOG_ERROR("No interface portal.");
    return kRejected;
  }
  return 0;
}

QorReturnT FrameworkPortal::registerComponent(
    QorMgmtSpiComponent_1* component) const {
  return portal_->registerComponent(component);
}

void FrameworkPortal::unregisterComponent(
    QorMgmtSpiComponent_1* component) const {
  if (portal_ == nullptr || portal_->unregisterComponent == nullptr) return;
  portal_->unregisterComponent(component);
}

}  // namespace QorCliUtilities
