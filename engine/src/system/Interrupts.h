#ifndef QOR_CLI_ENGINE_INTERRUPTS_H
#define QOR_CLI_ENGINE_INTERRUPTS_H

namespace QorCliEngine {

// The signals that reach an interactive engine, turned into flags.
//
// Until install() is called, signals have their ordinary effect and no flag is
// ever set. Afterwards they only interrupt waiting system calls; one that comes
// between looking at a flag and the call is not lost where both stand under
// BlockedSignals. One thread.
class Interrupts {
 public:
  // Catches SIGINT, SIGTERM, SIGHUP, SIGWINCH and SIGCONT.
  static void install();
  // Whether install() has been called: somebody may lose patience.
  static bool installed();

  // Whether the running command is to end: SIGINT has come, or leaving() holds.
  static bool requested();
  // Forgets SIGINT; returns whether it had come.
  static bool take();

  // Whether the engine is to end: SIGTERM or SIGHUP has come. Never reset.
  static bool leaving();

  // Whether any of the signals has come and has not been forgotten.
  static bool pending();

  // Forgets SIGWINCH (the terminal has another size) or SIGCONT (the engine
  // runs again after a stop); returns whether it had come.
  static bool takeResized();
  static bool takeContinued();
};

}  // namespace QorCliEngine

#endif
