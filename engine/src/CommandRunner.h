#ifndef QOR_CLI_ENGINE_COMMAND_RUNNER_H
#define QOR_CLI_ENGINE_COMMAND_RUNNER_H

#include <memory>
#include <string>
#include <vector>

#include "Diagnostics.h"
#include "OutputWriter.h"
#include "PipeStage.h"
#include "Session.h"
#include "Source.h"
#include "SourceCommands.h"
#include "StandardInput.h"

namespace QorCliEngine {

// Runs command lines. One thread.
class CommandRunner {
 public:
  // No argument is owned.
  CommandRunner(Session& session, SourceCommands& sourceCommands,
                StandardInput& input, OutputWriter& output,
                Diagnostics& diagnostics);

  // Runs one line, to its end. Returns false when it failed or was interrupted;
  // why, is then on standard error. An empty line succeeds. Throws OutputClosed
  // when nobody reads the output.
  bool run(std::string const& line);

 private:
  void runStages(std::vector<std::string> const& texts);
  std::unique_ptr<Source> prepare(std::string const& text);

  Session& session_;
  SourceCommands& sourceCommands_;
  StandardInput& input_;
  OutputWriter& output_;
  Diagnostics& diagnostics_;
};

}  // namespace QorCliEngine

#endif
