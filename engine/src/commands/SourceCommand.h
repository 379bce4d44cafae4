#ifndef QOR_CLI_ENGINE_SOURCE_COMMAND_H
#define QOR_CLI_ENGINE_SOURCE_COMMAND_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "AbstractCommand.h"
#include "sources/Source.h"

namespace QorCliEngine {

// A command of the engine's own: running it makes the source that is to be
// started when the rest of the line has been understood.
class SourceCommand : public QorCliUtilities::AbstractCommand {
 public:
  // Makes the source from the command's arguments, as they were typed. Throws
  // SourceFailure when they are invalid.
  using Maker =
      std::function<std::unique_ptr<Source>(std::vector<std::string> const&)>;

  // `wordsBefore`: how many words of the command stand before its arguments.
  // `made` receives the source; it is not owned and must outlive the command.
  SourceCommand(char const* name, unsigned wordsBefore, Maker maker,
                std::unique_ptr<Source>& made);

  int execute(QorCliUtilities::CliApiContext& context,
              std::vector<std::string> const& tokens,
              QorCliUtilities::IOutput& output) override;

 private:
  unsigned wordsBefore_;
  Maker maker_;
  std::unique_ptr<Source>& made_;
};

}  // namespace QorCliEngine

#endif
