#include "plugins/Plugin.h"

#include <dlfcn.h>
#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <functional>

#include "calls/StatusText.h"
#include "output/Messages.h"
#include "plugins/Framework.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

constexpr char kConfiguration[] = "";

[[noreturn]] void throwLoaderReason() {
  char const* const reason = ::dlerror();
  throw PluginFailure(reason == nullptr ? "unknown reason" : reason);
}

// Calls into the plug-in, which may throw anything. Returns a description of
// what it threw or of its status, empty when all went well.
std::string failureOf(char const* function,
                      std::function<QorReturnT()> const& call) {
  std::string const name = function;
  try {
    QorReturnT const status = call();
    if (status == 0) return "";
    return name + " failed with " + statusText(status);
  } catch (std::exception const& exception) {
    return "an exception came out of " + name + ": " + exception.what();
  } catch (...) {
    return "an exception of an unknown type came out of " + name;
  }
}

// The loader looks for a name without a slash in the system's folders.
std::string asPath(std::string const& path) {
  return path.find('/') == std::string::npos ? "./" + path : path;
}

FileDescriptor openFile(std::string const& path) {
  return FileDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

}  // namespace

Plugin::Library::Library(std::string const& path)
    : handle_(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throwLoaderReason();
}

Plugin::Library::~Library() { ::dlclose(handle_); }

void* Plugin::Library::function(char const* name) const {
  void* const address = ::dlsym(handle_, name);
  if (address == nullptr) throwLoaderReason();
  return address;
}

Plugin::Plugin(std::string const& path) : Plugin(path, nullptr) {}

Plugin::Plugin(std::string const& path, Plugin const* original) try
    : path_(path),
      file_(original == nullptr ? openFile(path) : FileDescriptor()),
      fileError_(file_ ? 0 : errno),
      copy_(original == nullptr ? LibraryCopy()
                                : LibraryCopy(original->file())),
      library_(copy_ ? copy_.path() : asPath(path)),
      init_(reinterpret_cast<QorLCMinitFunction>(
          library_.function("qorLCMinit"))),
      terminate_(reinterpret_cast<QorLCMterminateFunction>(
          library_.function("qorLCMterminate"))) {
  initialise();
} catch (PluginFailure const& failure) {
  throw PluginFailure("cannot load the plug-in \"" + path + '"' +
                      (original == nullptr ? "" : " again") + ": " +
                      failure.what());
}

Plugin::~Plugin() {
  stop();
  terminate();
  forgetComponents();
}

std::unique_ptr<Plugin> Plugin::loadAgain() const {
  return std::unique_ptr<Plugin>(new Plugin(path_, this));
}

FileDescriptor const& Plugin::file() const {
  if (file_) return file_;
  throw PluginFailure(std::string("cannot read it: ") +
                      std::strerror(fileError_));
}

std::vector<PipeComponent> Plugin::pipeComponents() const {
  return Framework::pipeComponents(components_);
}

void Plugin::initialise() {
  Framework& framework = Framework::instance();
  Framework::Registration const registration(
      framework,
      copy_ ? Framework::Registry::kCopies : Framework::Registry::kComponents);
  std::string failure = failureOf("qorLCMinit", [&] {
    return init_(framework.accessor(), kConfiguration);
  });
  components_ = registration.components();
  if (!framework.refusal().empty()) {
    failure = "its component is refused: " + framework.refusal();
  } else if (failure.empty() && components_.empty()) {
    failure = "it registers no component";
  }
  if (failure.empty()) return;
  forgetComponents();
  throw PluginFailure(failure);
}

void Plugin::start() {
  for (QorMgmtSpiComponent_1* component : components_) {
    std::string const failure = startOne(*component);
    if (!failure.empty()) refuse(*component, failure);
    started_.push_back(component);
  }
}

// Returns what is wrong, or an empty text.
std::string Plugin::startOne(QorMgmtSpiComponent_1 const& component) {
  std::string const missing =
      Framework::instance().missingDependency(component);
  if (!missing.empty()) return "needs " + missing + ", which nothing offers";
  return failureOf("start",
                   [&] { return component.start(QOR_STATE_CHANGE_NORMAL); });
}

// Last started, first stopped.
void Plugin::stop() noexcept {
  for (; !started_.empty(); started_.pop_back()) {
    QorMgmtSpiComponent_1 const& component = *started_.back();
    report(failureOf("stop",
                     [&] { return component.stop(QOR_STATE_CHANGE_NORMAL); }));
  }
}

void Plugin::terminate() noexcept {
  report(failureOf("qorLCMterminate", [&] {
    terminate_();
    return QorReturnT{0};
  }));
}

// A component that is still known would be called in an unloaded library.
void Plugin::forgetComponents() {
  for (QorMgmtSpiComponent_1* component : components_) {
    Framework::instance().unregisterComponent(component);
  }
  components_.clear();
}

void Plugin::refuse(QorMgmtSpiComponent_1 const& component,
                    std::string const& failure) const {
  throw PluginFailure("cannot use the plug-in \"" + path_ + "\": component \"" +
                      component.identity.componentName + "\": " + failure);
}

void Plugin::report(std::string const& failure) const {
  if (failure.empty()) return;
  Messages::show("plug-in \"" + path_ + "\": " + failure);
}

}  // namespace QorCliEngine
