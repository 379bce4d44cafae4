#include "Plugins.h"

#include <filesystem>
#include <system_error>

#include "EngineErrors.h"

namespace QorCliEngine {
namespace {

namespace fs = std::filesystem;

constexpr char kDefaultPlugin[] = "libcli_pipe.so";

// Where plug-ins may be, seen from the engine's own folder: in a build tree and
// installed.
constexpr char const* kPluginFolders[] = {"../lib", QOR_INSTALLED_PLUGINS};

std::string defaultPlugin() {
  std::error_code error;
  fs::path const folder =
      fs::read_symlink("/proc/self/exe", error).parent_path();
  for (char const* plugins : kPluginFolders) {
    fs::path const path = folder / plugins / kDefaultPlugin;
    if (fs::exists(path, error)) return path.lexically_normal().string();
  }
  throw PluginFailure(std::string("there is no ") + kDefaultPlugin +
                      " beside the engine; name one with --plugin");
}

}  // namespace

Plugins::Plugins(std::vector<std::string> paths) {
  if (paths.empty()) paths.push_back(defaultPlugin());
  try {
    for (std::string const& path : paths) {
      plugins_.push_back(std::make_unique<Plugin>(path));
    }
    for (auto const& plugin : plugins_) plugin->start();
  } catch (...) {
    unload();
    throw;
  }
}

Plugins::~Plugins() { unload(); }

void Plugins::unload() {
  while (!plugins_.empty()) plugins_.pop_back();
}

}  // namespace QorCliEngine
