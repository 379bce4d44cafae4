#ifndef QOR_CLI_ENGINE_SHELL_H
#define QOR_CLI_ENGINE_SHELL_H

#include "calls/Session.h"
#include "completion/Completer.h"
#include "session/CommandRunner.h"
#include "terminal/History.h"

namespace QorCliEngine {

// The engine at a terminal: reads command lines from the operator and runs them
// until the operator leaves. One thread.
class Shell {
 public:
  // No argument is owned.
  Shell(Session& session, Completer& completer, History& history,
        CommandRunner& runner);

  // Returns whether the last command succeeded. Throws OutputClosed.
  bool run();

 private:
  bool repeat(std::string& line) const;
  bool runLine(std::string const& line);

  Session& session_;
  Completer& completer_;
  History& history_;
  CommandRunner& runner_;
};

}  // namespace QorCliEngine

#endif
