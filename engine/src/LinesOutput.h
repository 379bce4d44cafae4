#ifndef QOR_CLI_ENGINE_LINES_OUTPUT_H
#define QOR_CLI_ENGINE_LINES_OUTPUT_H

#include <string>
#include <vector>

#include "IOutput.h"

namespace QorCliEngine {

// The sink that the engine's own command tree is given: a list of strings.
class LinesOutput : public QorCliUtilities::IOutput {
 public:
  void push_back(std::string const& line) override { lines_.push_back(line); }
  void push_back(std::vector<std::string> const& lines) override {
    lines_.insert(lines_.end(), lines.begin(), lines.end());
  }
  std::vector<std::string>& getOutput() override { return lines_; }

 private:
  std::vector<std::string> lines_;
};

}  // namespace QorCliEngine

#endif
