#include "Plugin.h"

#include <dlfcn.h>

#include <functional>
#include <iostream>

#include "EngineErrors.h"
#include "Framework.h"
#include "StatusText.h"

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

}  // namespace

Plugin::Library::Library(std::string const& path)
    : handle_(::dlopen(asPath(path).c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throwLoaderReason();
}

Plugin::Library::~Library() { ::dlclose(handle_); }

void* Plugin::Library::function(char const* name) const {
  void* const address = ::dlsym(handle_, name);
  if (address == nullptr) throwLoaderReason();
  return address;
}

Plugin::Plugin(std::string const& path) try
    : path_(path),
      library_(path),
      init_(reinterpret_cast<QorLCMinitFunction>(
          library_.function("qorLCMinit"))),
      terminate_(reinterpret_cast<QorLCMterminateFunction>(
          library_.function("qorLCMterminate"))) {
  initialise();
} catch (PluginFailure const& failure) {
  throw PluginFailure("cannot load the plug-in \"" + path +
                      "\": " + failure.what());
}

Plugin::~Plugin() {
  stop();
  terminate();
  forgetComponents();
}

void Plugin::initialise() {
  Framework& framework = Framework::instance();
  std::size_t const before = framework.components().size();
  std::string failure = failureOf("qorLCMinit", [&] {
    return init_(framework.accessor(), kConfiguration);
  });
  auto const& all = framework.components();
  for (std::size_t i = before; i < all.size(); ++i) {
    components_.push_back(all[i]);
  }
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
  std::cerr << "qorcli: plug-in \"" << path_ << "\": " << failure << '\n';
}

}  // namespace QorCliEngine
