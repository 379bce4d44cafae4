#ifndef QOR_UNIT_RECORDING_COMMAND_H
#define QOR_UNIT_RECORDING_COMMAND_H

#include <string>
#include <vector>

#include "AbstractCommand.h"

namespace QorUnit {

// A command that writes down the words it was run with, leaves `prompt` in the
// context and returns `result`.
class RecordingCommand : public QorCliUtilities::AbstractCommand {
 public:
  explicit RecordingCommand(char const* name, int resultOfRuns = 0)
      : AbstractCommand(name), result(resultOfRuns) {}

  int execute(QorCliUtilities::CliApiContext& context,
              std::vector<std::string> const& tokens,
              QorCliUtilities::IOutput& output) override;
  bool isAuthorized(QorCliUtilities::CliApiContext& context) override;

  int result;
  bool authorized = true;
  std::string prompt;  // empty: none is left
  std::vector<std::vector<std::string>> runs;
};

}  // namespace QorUnit

#endif
