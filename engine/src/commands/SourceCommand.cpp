#include "commands/SourceCommand.h"

#include <utility>

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
  auto const begin = tokens.begin() + wordsBefore_;
  made_ = maker_(std::vector<std::string>(begin, tokens.end()));
  return 0;
}

}  // namespace QorCliEngine
