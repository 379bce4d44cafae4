#include <csignal>
#include <iostream>

#include "Engine.h"
#include "EngineErrors.h"
#include "Options.h"

int main(int argc, char** argv) {
  using namespace QorCliEngine;
  try {
    Options options;
    if (auto const status = options.parse(argc, argv)) return *status;
    std::signal(SIGPIPE, SIG_IGN);
    // A parent may have it ignored, and then no program's exit status is kept.
    std::signal(SIGCHLD, SIG_DFL);
    return Engine(options).run();
  } catch (PluginFailure const& failure) {
    std::cerr << "qorcli: " << failure.what() << '\n';
    return kExitUnusable;
  } catch (std::exception const& failure) {
    std::cerr << "qorcli: " << failure.what() << '\n';
    return kExitFailedCommand;
  }
}
