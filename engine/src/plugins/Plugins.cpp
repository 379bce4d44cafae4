#include "plugins/Plugins.h"

#include <filesystem>
#include <system_error>

#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

namespace fs = std::filesystem;

constexpr char const* kDefaultPlugins[] = {"libcli_pipe.so", "libcli_text.so"};

// Where plug-ins may be, seen from the engine's own folder: in a build tree and
// installed.
constexpr char const* kPluginFolders[] = {"../lib", QOR_INSTALLED_PLUGINS};

std::string pathBesideEngine(char const* plugin) {
  std::error_code error;
  fs::path const folder =
      fs::read_symlink("/proc/self/exe", error).parent_path();
  for (char const* plugins : kPluginFolders) {
    fs::path const path = folder / plugins / plugin;
    if (fs::exists(path, error)) return path.lexically_normal().string();
  }
  throw PluginFailure(std::string("there is no ") + plugin +
                      " beside the engine; name plug-ins with --plugin");
}

std::vector<std::string> defaultPlugins() {
  std::vector<std::string> paths;
  for (char const* plugin : kDefaultPlugins) {
    paths.push_back(pathBesideEngine(plugin));
  }
  return paths;
}

// Has the trace begin anew when it goes out of scope.
class TraceGap {
 public:
  // Shows what has been traced so far.
  explicit TraceGap(Diagnostics& diagnostics) : diagnostics_(diagnostics) {
    diagnostics_.showRecords();
  }
  ~TraceGap() { diagnostics_.dropTrace(); }
  TraceGap(TraceGap const&) = delete;
  TraceGap& operator=(TraceGap const&) = delete;

 private:
  Diagnostics& diagnostics_;
};

}  // namespace

Plugins::Plugins(std::vector<std::string> paths, Diagnostics& diagnostics)
    : diagnostics_(diagnostics) {
  if (paths.empty()) paths = defaultPlugins();
  try {
    for (std::string const& path : paths) {
      loaded_.push_back(std::make_unique<Plugin>(path));
      instances_.push_back({loaded_.back().get()});
    }
    for (auto const& plugin : loaded_) plugin->start();
  } catch (...) {
    unload();
    throw;
  }
}

Plugins::~Plugins() { unload(); }

Plugin const& Plugins::instance(std::size_t plugin, std::size_t number) {
  if (number == instances_[plugin].size()) loadAgain(plugin);
  return *instances_[plugin].at(number);
}

void Plugins::loadAgain(std::size_t plugin) {
  std::vector<Plugin*>& instances = instances_[plugin];
  if (instances.size() == kMaxInstances) {
    throw PluginFailure("the plug-in \"" + instances.front()->path() +
                        "\" serves " + std::to_string(kMaxInstances) +
                        " stages already; a line can have no more of it");
  }
  TraceGap const gap(diagnostics_);
  auto another = instances.front()->loadAgain();
  another->start();
  instances.reserve(instances.size() + 1);
  loaded_.push_back(std::move(another));
  instances.push_back(loaded_.back().get());
}

void Plugins::unload() {
  while (!loaded_.empty()) loaded_.pop_back();
}

}  // namespace QorCliEngine
