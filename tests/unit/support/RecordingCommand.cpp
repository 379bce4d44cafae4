#include "RecordingCommand.h"

namespace QorUnit {

int RecordingCommand::execute(QorCliUtilities::CliApiContext& context,
                              std::vector<std::string> const& tokens,
                              QorCliUtilities::IOutput& output) {
  runs.push_back(tokens);
  output.push_back(std::string(name()) + " ran");
  if (!prompt.empty()) context.setPromptString(prompt.c_str());
  return result;
}

bool RecordingCommand::isAuthorized(QorCliUtilities::CliApiContext&) {
  return authorized;
}

}  // namespace QorUnit
