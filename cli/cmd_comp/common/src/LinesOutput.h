#ifndef QOR_CLI_LINES_OUTPUT_H
#define QOR_CLI_LINES_OUTPUT_H

#include <string>
#include <vector>

#include "IOutput.h"

namespace QorCliUtilities {

// An output sink in memory: a list of strings.
//
// For a pipe command it also carries the command's input: before the command
// runs the list holds one string, the whole text of the preceding command,
// which the command replaces by what it prints. Used by one thread at a time.
class LinesOutput : public IOutput {
 public:
  void push_back(std::string const& line) override;
  void push_back(std::vector<std::string> const& lines) override;
  std::vector<std::string>& getOutput() override;

  // Removes all strings.
  virtual void clear();

 private:
  std::vector<std::string> lines_;
};

}  // namespace QorCliUtilities

#endif
