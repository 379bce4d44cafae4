#ifndef QOR_CLI_ENGINE_ERRORS_H
#define QOR_CLI_ENGINE_ERRORS_H

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
  explicit CommandFailure(std::string const& sentence, std::string lines = "")
      : std::runtime_error(sentence), lines_(std::move(lines)) {}

  // What the failing component answered to be printed, each line with its line
  // feed; often empty.
  std::string const& lines() const { return lines_; }

 private:
  std::string lines_;
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
