#ifndef QOR_TEST_QUIET_PORTAL_H
#define QOR_TEST_QUIET_PORTAL_H

#include "FrameworkRecords.h"

namespace qor_test {

// A portal for tests that watch what a call does to the process: it accepts
// every component, allocates nothing and makes no system call. There is one.
class QuietPortal {
 public:
  // For the plug-in's initialisation.
  static PortalAccessorRecord* accessor();

  // The pipe command interface of the component that was registered last, of
  // which there must be one.
  static PipeCommandInterface const& commands();
};

}  // namespace qor_test

#endif
