#ifndef QOR_CLI_ENGINE_CRASH_GUARD_H
#define QOR_CLI_ENGINE_CRASH_GUARD_H

#include <array>
#include <csignal>

namespace QorCliEngine {

// Gives the terminal back as it was when a signal ends the engine while it
// lives, as when a plug-in crashes that is asked for candidates. The engine
// still ends by that signal. One at a time, one thread.
class CrashGuard {
 public:
  // Takes the settings of the terminal on standard input as they are now.
  // `farewell` is then written to the descriptor `screen`; it is not copied.
  CrashGuard(int screen, char const* farewell);
  ~CrashGuard();
  CrashGuard(CrashGuard const&) = delete;
  CrashGuard& operator=(CrashGuard const&) = delete;

 private:
  static constexpr std::array<int, 7> kSignals = {
      SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGSYS, SIGQUIT};

  std::array<struct sigaction, kSignals.size()> before_{};
  stack_t stackBefore_{};
};

}  // namespace QorCliEngine

#endif
