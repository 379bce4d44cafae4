#ifndef QOR_CLI_ENGINE_PLUGINS_H
#define QOR_CLI_ENGINE_PLUGINS_H

#include <memory>
#include <string>
#include <vector>

#include "Plugin.h"

namespace QorCliEngine {

// All plug-ins of the engine, loaded and started in the order given, stopped
// and unloaded in reverse order when the object is destroyed.
class Plugins {
 public:
  // With no paths, loads the plug-in that was built or installed beside the
  // engine. Throws PluginFailure.
  explicit Plugins(std::vector<std::string> paths);
  ~Plugins();
  Plugins(Plugins const&) = delete;
  Plugins& operator=(Plugins const&) = delete;

 private:
  void unload();

  std::vector<std::unique_ptr<Plugin>> plugins_;
};

}  // namespace QorCliEngine

#endif
