#include "commands/SourceCommand.h"

#include <utility>

#include "commands/CommandLine.h"

namespace QorCliEngine {

SourceCommand::SourceCommand(char const* name, unsigned wordsBefore,
                             Maker maker, std::unique_ptr<Source>& made)
    : AbstractCommand(name),
      wordsBefore_(wordsBefore),
      maker_(std::move(maker)),
      made_(made) {}

int SourceCommand::execute(QorCliUtilities::CliApiContext&,
                           std::vector<std::string> const& tokens,
                           QorCliUtilities::IOutput&) {
  std::vector<std::string> arguments;
  for (std::size_t i = wordsBefore_; i < tokens.size(); ++i) {
    arguments.push_back(CommandLine::unquoted(tokens[i]));
  }
  made_ = maker_(arguments);
  return 0;
}

}  // namespace QorCliEngine
