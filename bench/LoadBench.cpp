// The time to load, initialise, terminate and unload the library. Ends with
// exit status 1 if it does not register its component.

#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <cstdlib>
#include <iostream>

#include "QorMgmtSpi.h"

namespace {

int registered = 0;

QorReturnT registerComponent(QorMgmtSpiComponent_1*) {
  ++registered;
  return 0;
}

QorReturnT unregisterComponent(QorMgmtSpiComponent_1*) {
  --registered;
  return 0;
}

QorMgmtSpiInterfacePortal* portal(char const*) {
  static QorMgmtSpiInterfacePortal thePortal{};
  thePortal.registerComponent = registerComponent;
  thePortal.unregisterComponent = unregisterComponent;
  return &thePortal;
}

void require(bool right, char const* what) {
  if (right) return;
  std::cerr << "failed: " << what << '\n';
  std::exit(1);
}

void* symbol(void* library, char const* name) {
  void* const address = dlsym(library, name);
  require(address != nullptr, name);
  return address;
}

// Its dependencies are only loaded the first time.
void loadAndUnload() {
  void* const library = dlopen(QOR_CLI_PIPE_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  require(library != nullptr, QOR_CLI_PIPE_LIBRARY);
  QorMgmtSpiInterfacePortalAccessor accessor{portal};
  auto const init =
      reinterpret_cast<QorLCMinitFunction>(symbol(library, "qorLCMinit"));
  require(init(&accessor, nullptr) == 0 && registered == 1, "qorLCMinit");
  reinterpret_cast<QorLCMterminateFunction>(
      symbol(library, "qorLCMterminate"))();
  require(registered == 0, "qorLCMterminate");
  require(dlclose(library) == 0, "dlclose");
}

void load(benchmark::State& state) {
  for (auto _ : state) loadAndUnload();
}

BENCHMARK(load)->Name("Load and unload")->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
