#ifndef QOR_CLI_ENGINE_COMMAND_RUNNER_H
#define QOR_CLI_ENGINE_COMMAND_RUNNER_H

#include <memory>
#include <string>
#include <vector>

#include "calls/Session.h"
#include "commands/SourceCommands.h"
#include "completion/Completer.h"
#include "diagnostics/Diagnostics.h"
#include "output/OutputWriter.h"
#include "pipeline/PipeStage.h"
#include "plugins/Plugins.h"
#include "sources/Source.h"
#include "sources/StandardInput.h"

namespace QorCliEngine {

// Runs command lines. One thread.
class CommandRunner {
 public:
  // No argument is owned.
  CommandRunner(Plugins& plugins, Session& session,
                SourceCommands& sourceCommands, Completer& completer,
                StandardInput& input, OutputWriter& output,
                Diagnostics& diagnostics);

  // Runs one line, to its end. Returns false when it failed or was interrupted;
  // why, is then on standard error. An empty line and a comment succeed. Throws
  // OutputClosed when nobody reads the output.
  bool run(std::string const& line);

 private:
  void explain(std::string const& line, CommandFailure const& failure);
  void pointAt(std::string const& line, std::size_t stage,
               FailureReason::Place const& place) const;
  void pointOut(std::string const& line, std::size_t stage);
  void runInFull(std::vector<StageText> stages);
  void runStages(std::vector<StageText> const& stages);
  std::unique_ptr<Source> prepare(StageText const& stage);

  Plugins& plugins_;
  Session& session_;
  SourceCommands& sourceCommands_;
  Completer& completer_;
  StandardInput& input_;
  OutputWriter& output_;
  Diagnostics& diagnostics_;
};

}  // namespace QorCliEngine

#endif
