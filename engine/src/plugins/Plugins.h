#ifndef QOR_CLI_ENGINE_PLUGINS_H
#define QOR_CLI_ENGINE_PLUGINS_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "diagnostics/Diagnostics.h"
#include "plugins/Plugin.h"

namespace QorCliEngine {

// All plug-ins of the engine, loaded and started in the order given, stopped
// and unloaded in reverse order when the object is destroyed. One thread.
class Plugins {
 public:
  // Of one plug-in. Each costs its writable data, and a file in memory that
  // holds the whole library and is open.
  static constexpr std::size_t kMaxInstances = 64;

  // With no paths, loads the plug-ins that were built or installed beside the
  // engine. Throws PluginFailure. `diagnostics` is not owned.
  Plugins(std::vector<std::string> paths, Diagnostics& diagnostics);
  ~Plugins();
  Plugins(Plugins const&) = delete;
  Plugins& operator=(Plugins const&) = delete;

  // How many there are, whatever the number of their instances.
  std::size_t size() const { return instances_.size(); }

  // Instance `number` of a plug-in, both counted from 0. The next one that
  // there is not is loaded, started, and kept; what that traces is not shown.
  // Throws PluginFailure.
  Plugin const& instance(std::size_t plugin, std::size_t number);

 private:
  void loadAgain(std::size_t plugin);
  void unload();

  Diagnostics& diagnostics_;
  std::vector<std::unique_ptr<Plugin>> loaded_;  // in the order of loading
  std::vector<std::vector<Plugin*>> instances_;  // of each plug-in
};

}  // namespace QorCliEngine

#endif
