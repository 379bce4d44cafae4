#ifndef QOR_CLI_ENGINE_ERRORS_H
#define QOR_CLI_ENGINE_ERRORS_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace QorCliEngine {

// A source command could not do its work: what() says why in plain words,
// without naming the command.
class SourceFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A command line failed: what() is a plain sentence for the operator that names
// the stage.
class CommandFailure : public std::runtime_error {
 public:
  // `stage`: the pipe command that failed, counted from 1 in the line as it was
  // typed; 0 when it was none.
  explicit CommandFailure(std::string const& sentence, std::string lines = "",
                          std::size_t stage = 0)
      : std::runtime_error(sentence), lines_(std::move(lines)), stage_(stage) {}

  // What the failing component answered to be printed, each line with its line
  // feed; often empty.
  std::string const& lines() const { return lines_; }

  std::size_t stage() const { return stage_; }

 private:
  std::string lines_;
  std::size_t stage_;
};

// A stage is no command that is known, or not the whole of one.
class NotUnderstood : public CommandFailure {
 public:
  NotUnderstood(std::size_t stage, std::string const& sentence)
      : CommandFailure(sentence, "", stage) {}
};

// A plug-in cannot be used: what() is a plain sentence that names it.
class PluginFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Nobody reads the output any more.
struct OutputClosed {};

// The operator has interrupted the command.
struct Interrupted {};

}  // namespace QorCliEngine

#endif
