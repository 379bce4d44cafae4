#include "Plugin.h"

#include <dlfcn.h>

#include <fstream>
#include <stdexcept>

namespace qor_test {
namespace {

void* symbol(void* handle, char const* name) {
  void* const address = dlsym(handle, name);
  if (address == nullptr) throw std::runtime_error(dlerror());
  return address;
}

}  // namespace

Plugin::Plugin(std::string const& library)
    : handle_(dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
  init = reinterpret_cast<InitFunction>(symbol(handle_, "qorLCMinit"));
  terminate =
      reinterpret_cast<TerminateFunction>(symbol(handle_, "qorLCMterminate"));
}

Plugin::~Plugin() {
  if (handle_ != nullptr) unload();
}

bool Plugin::unload() {
  int const status = dlclose(handle_);
  handle_ = nullptr;
  return status == 0;
}

bool Plugin::isMapped(std::string const& library) {
  std::string const name = library.substr(library.rfind('/'));
  std::ifstream maps("/proc/self/maps");
  if (!maps) throw std::runtime_error("/proc/self/maps cannot be read");
  for (std::string line; std::getline(maps, line);) {
    if (line.find(name) != std::string::npos) return true;
  }
  return false;
}

}  // namespace qor_test
