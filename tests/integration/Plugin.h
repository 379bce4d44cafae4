#ifndef QOR_TEST_PLUGIN_H
#define QOR_TEST_PLUGIN_H

#include <string>

#include "FrameworkRecords.h"

namespace qor_test {

// A built plug-in, loaded as the framework loads it.
class Plugin {
 public:
  // Loads `library`; throws std::runtime_error with the loader's text when
  // that fails or an entry point is missing.
  explicit Plugin(std::string const& library = QOR_CLI_PIPE_LIBRARY);
  // Unloads the library if unload() has not done so.
  ~Plugin();
  Plugin(Plugin const&) = delete;
  Plugin& operator=(Plugin const&) = delete;

  // The entry points, as they were found.
  InitFunction init = nullptr;
  TerminateFunction terminate = nullptr;

  // Whether the library could be closed.
  bool unload();

  // Whether any part of the file `library` is mapped into this process.
  static bool isMapped(std::string const& library = QOR_CLI_PIPE_LIBRARY);

 private:
  void* handle_;
};

}  // namespace qor_test

#endif
