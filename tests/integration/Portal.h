#ifndef QOR_TEST_PORTAL_H
#define QOR_TEST_PORTAL_H

#include <string>
#include <vector>

#include "FrameworkRecords.h"

namespace qor_test {

// The framework's interface portal, which records its calls. The functions have
// no argument for the portal, so there is one at a time: the newest object.
class Portal {
 public:
  Portal();
  ~Portal();
  Portal(Portal const&) = delete;
  Portal& operator=(Portal const&) = delete;

  PortalAccessorRecord accessor;
  PortalRecord record;

  std::int32_t registerResult = 0;    // status of registration
  std::int32_t unregisterResult = 0;  // and of unregistration

  // The calls in order: "getPortal 1", "register", "unregister", or
  // "getInterface".
  std::vector<std::string> calls;
  // The component last registered and last unregistered, or null.
  ComponentRecord* registered = nullptr;
  ComponentRecord* unregistered = nullptr;
};

}  // namespace qor_test

#endif
