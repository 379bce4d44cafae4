#ifndef QOR_TEST_QUIET_PORTAL_H
#define QOR_TEST_QUIET_PORTAL_H

#include "FrameworkRecords.h"

namespace qor_test {

// A portal for tests that watch allocations and system calls: it accepts every
// component, allocates nothing and makes no system call. There is one.
class QuietPortal {
 public:
  // For the plug-in's initialisation.
  static PortalAccessorRecord* accessor();

  // The pipe command interface of the component registered last. There must be
  // one.
  static PipeCommandInterface const& commands();
};

}  // namespace qor_test

#endif
