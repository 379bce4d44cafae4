#ifndef QOR_CLI_ENGINE_PLUGIN_H
#define QOR_CLI_ENGINE_PLUGIN_H

#include <string>
#include <vector>

#include "QorMgmtSpi.h"

namespace QorCliEngine {

// A loaded plug-in: initialised when it is made; stopped, terminated and
// unloaded when it is destroyed. Nothing of it may be in use by then.
class Plugin {
 public:
  // Loads the library at `path`, a file's path also without a slash, and lets
  // it register its components. Throws PluginFailure.
  explicit Plugin(std::string const& path);
  ~Plugin();
  Plugin(Plugin const&) = delete;
  Plugin& operator=(Plugin const&) = delete;

  // Checks the dependencies of the plug-in's components and starts them; to be
  // called when all plug-ins are loaded. Throws PluginFailure.
  void start();

 private:
  class Library {
   public:
    explicit Library(std::string const& path);
    ~Library();
    Library(Library const&) = delete;
    Library& operator=(Library const&) = delete;
    // Throws PluginFailure when the library has no such function.
    void* function(char const* name) const;

   private:
    void* handle_;
  };

  void initialise();
  static std::string startOne(QorMgmtSpiComponent_1 const& component);
  void stop() noexcept;
  void terminate() noexcept;
  void forgetComponents();
  void report(std::string const& failure) const;
  [[noreturn]] void refuse(QorMgmtSpiComponent_1 const& component,
                           std::string const& failure) const;

  std::string path_;
  Library library_;
  QorLCMinitFunction init_;
  QorLCMterminateFunction terminate_;
  std::vector<QorMgmtSpiComponent_1*> components_;
  std::vector<QorMgmtSpiComponent_1*> started_;
};

}  // namespace QorCliEngine

#endif
