#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "Engine.h"
#include "Options.h"
#include "output/Messages.h"
#include "system/EngineErrors.h"

namespace {

// A file that is opened later must not take the place of a standard descriptor
// that is closed. What is opened here can neither be read from nor written to,
// as what is closed.
void fillStandardDescriptors() {
  for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) >= 0) continue;
    ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

}  // namespace

int main(int argc, char** argv) {
  using namespace QorCliEngine;
  fillStandardDescriptors();
  try {
    Options options;
    if (auto const status = options.parse(argc, argv)) return *status;
    std::signal(SIGPIPE, SIG_IGN);
    // A parent may have it ignored, and then no program's exit status is kept.
    std::signal(SIGCHLD, SIG_DFL);
    return Engine(options).run();
  } catch (PluginFailure const& failure) {
    Messages::show(failure.what());
    return kExitUnusable;
  } catch (std::exception const& failure) {
    Messages::show(failure.what());
    return kExitFailedCommand;
  }
}
