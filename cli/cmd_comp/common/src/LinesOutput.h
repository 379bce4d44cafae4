#ifndef QOR_CLI_LINES_OUTPUT_H
#define QOR_CLI_LINES_OUTPUT_H

#include <string>
#include <vector>

#include "IOutput.h"

namespace QorCliUtilities {

// An output sink in memory: a list of strings.
//
// It also carries the input of a pipe command: before the command runs, the
// list holds one string, the text of the preceding command, which the command
// replaces by its output. Used by one thread at a time.
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
