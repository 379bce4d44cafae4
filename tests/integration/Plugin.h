#ifndef QOR_TEST_PLUGIN_H
#define QOR_TEST_PLUGIN_H

#include <string>

#include "FrameworkRecords.h"

namespace qor_test {

// A plug-in, loaded like the framework does.
class Plugin {
 public:
  // Loads `library`. Throws std::runtime_error with the loader's text if that
  // fails or an entry point is missing.
  explicit Plugin(std::string const& library = QOR_CLI_PIPE_LIBRARY);
  // Unloads the library, unless unload() has.
  ~Plugin();
  Plugin(Plugin const&) = delete;
  Plugin& operator=(Plugin const&) = delete;

  // The entry points.
  InitFunction init = nullptr;
  TerminateFunction terminate = nullptr;

  // Closes the library; returns whether that succeeded.
  bool unload();

  // Whether any part of the file `library` is mapped into this process.
  static bool isMapped(std::string const& library = QOR_CLI_PIPE_LIBRARY);

 private:
  void* handle_;
};

}  // namespace qor_test

#endif
