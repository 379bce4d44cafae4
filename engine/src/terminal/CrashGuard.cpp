#include "terminal/CrashGuard.h"

#include <termios.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>

namespace QorCliEngine {
namespace {

constexpr std::size_t kStackSize = 64 * 1024;  // bytes

termios settings;
char const* lastWords = "";
int screenDescriptor = -1;
// The ordinary stack may be what has overflowed.
char handlerStack[kStackSize];

extern "C" void giveTerminalBack(int signal) {
  ::tcsetattr(STDIN_FILENO, TCSANOW, &settings);
  ssize_t const written =
      ::write(screenDescriptor, lastWords, std::strlen(lastWords));
  static_cast<void>(written);
  // Blocked up to the return; the default action is in place again.
  std::raise(signal);
}

}  // namespace

CrashGuard::CrashGuard(int screen, char const* farewell) {
  ::tcgetattr(STDIN_FILENO, &settings);
  screenDescriptor = screen;
  lastWords = farewell;
  stack_t stack{};
  stack.ss_sp = handlerStack;
  stack.ss_size = sizeof handlerStack;
  ::sigaltstack(&stack, &stackBefore_);
  struct sigaction action {};
  action.sa_handler = giveTerminalBack;
  action.sa_flags = SA_ONSTACK | static_cast<int>(SA_RESETHAND);
  sigfillset(&action.sa_mask);
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &action, &before_[i]);
  }
}

CrashGuard::~CrashGuard() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &before_[i], nullptr);
  }
  ::sigaltstack(&stackBefore_, nullptr);
}

}  // namespace QorCliEngine
