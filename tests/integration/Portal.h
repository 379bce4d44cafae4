#ifndef QOR_TEST_PORTAL_H
#define QOR_TEST_PORTAL_H

#include <string>
#include <vector>

#include "FrameworkRecords.h"

namespace qor_test {

// The framework's interface portal, and what was done with it. The functions in
// its records have no argument that tells portals apart, so there is one at a
// time, and its records are those of the newest object.
class Portal {
 public:
  Portal();
  ~Portal();
  Portal(Portal const&) = delete;
  Portal& operator=(Portal const&) = delete;

  PortalAccessorRecord accessor;
  PortalRecord record;

  std::int32_t registerResult = 0;    // what registration answers
  std::int32_t unregisterResult = 0;  // what the opposite answers

  // What was called, in order: "getPortal 1", "register", "unregister", or
  // "getInterface".
  std::vector<std::string> calls;
  // The component of the last registration and of its opposite, or null.
  ComponentRecord* registered = nullptr;
  ComponentRecord* unregistered = nullptr;
};

}  // namespace qor_test

#endif
