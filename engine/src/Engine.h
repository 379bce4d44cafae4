#ifndef QOR_CLI_ENGINE_ENGINE_H
#define QOR_CLI_ENGINE_ENGINE_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Options.h"
#include "calls/Session.h"
#include "commands/SourceCommands.h"
#include "completion/Completer.h"
#include "diagnostics/Diagnostics.h"
#include "output/OutputWriter.h"
#include "plugins/Plugins.h"
#include "session/CommandRunner.h"
#include "sources/StandardInput.h"
#include "terminal/History.h"

namespace QorCliEngine {

// The engine: its plug-ins, its session, and what it was asked to do with them.
// One in a process, one thread.
class Engine {
 public:
  // Loads the plug-ins. Throws PluginFailure, and what Diagnostics throws.
  // `options` is not owned.
  explicit Engine(Options const& options);

  // Does what the options ask for and returns the exit status.
  int run();

 private:
  int dispatch();
  int runLines();
  int runScript();
  int runShell();
  History& history();
  int printCandidates(QorCliActionEnum_2T action, std::string const& line);

  Options const& options_;
  Diagnostics diagnostics_;
  Plugins plugins_;
  Session session_;
  std::unique_ptr<OutputWriter> output_;
  StandardInput input_;
  SourceCommands sourceCommands_;
  Completer completer_;
  CommandRunner runner_;
  std::optional<History> history_;
};

}  // namespace QorCliEngine

#endif
