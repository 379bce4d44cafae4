#ifndef QOR_CLI_ENGINE_PLUGIN_H
#define QOR_CLI_ENGINE_PLUGIN_H

#include <memory>
#include <string>
#include <vector>

#include "QorMgmtSpi.h"
#include "plugins/LibraryCopy.h"
#include "plugins/PipeComponent.h"
#include "system/FileDescriptor.h"

namespace QorCliEngine {

// An instance of a plug-in: loaded and initialised when it is made; stopped,
// terminated and unloaded when it is destroyed. Nothing of it may be in use by
// then. One thread.
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

  // Makes another instance of a first one: the library is loaded again, and has
  // data of its own. Its components bear the same names, so that they are found
  // through the new object only. Throws PluginFailure.
  std::unique_ptr<Plugin> loadAgain() const;

  // As the operator gave it.
  std::string const& path() const { return path_; }

  // The pipe command interfaces of the plug-in's components, in the order of
  // their registration. Valid while the object exists.
  std::vector<PipeComponent> pipeComponents() const;

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

  // `original`: the first instance; null when this is to be it.
  Plugin(std::string const& path, Plugin const* original);

  // The open file; throws PluginFailure when it could not be opened.
  FileDescriptor const& file() const;

  void initialise();
  static std::string startOne(QorMgmtSpiComponent_1 const& component);
  void stop() noexcept;
  void terminate() noexcept;
  void forgetComponents();
  void report(std::string const& failure) const;
  [[noreturn]] void refuse(QorMgmtSpiComponent_1 const& component,
                           std::string const& failure) const;

  std::string path_;
  FileDescriptor file_;  // what was loaded, whatever the path leads to later
  int fileError_;        // an errno: why that could not be opened
  LibraryCopy copy_;     // none in a first instance
  Library library_;
  QorLCMinitFunction init_;
  QorLCMterminateFunction terminate_;
  std::vector<QorMgmtSpiComponent_1*> components_;
  std::vector<QorMgmtSpiComponent_1*> started_;
};

}  // namespace QorCliEngine

#endif
