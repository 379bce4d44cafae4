#ifndef QOR_TEST_PLUGIN_H
#define QOR_TEST_PLUGIN_H

#include "FrameworkRecords.h"

namespace qor_test {

// The built plug-in, loaded as the framework loads it.
class Plugin {
 public:
  // Loads the library; throws std::runtime_error with the loader's text when
  // that fails or an entry point is missing.
  Plugin();
  // Unloads the library if unload() has not done so.
  ~Plugin();
  Plugin(Plugin const&) = delete;
  Plugin& operator=(Plugin const&) = delete;

  // The entry points, as they were found.
  InitFunction init = nullptr;
  TerminateFunction terminate = nullptr;

  // Whether the library could be closed.
  bool unload();

  // Whether any part of the library's file is mapped into this process.
  static bool isMapped();

 private:
  void* handle_;
};

}  // namespace qor_test

#endif
