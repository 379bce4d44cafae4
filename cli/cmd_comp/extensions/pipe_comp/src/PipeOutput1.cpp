#include "PipeOutput1.h"

namespace QorCliPipe {

void PipeOutput1::push_back(std::string const& line) { lines_.push_back(line); }

void PipeOutput1::push_back(std::vector<std::string> const& lines) {
  lines_.insert(lines_.end(), lines.begin(), lines.end());
}

std::vector<std::string>& PipeOutput1::getOutput() { return lines_; }

void PipeOutput1::clear() { lines_.clear(); }

}  // namespace QorCliPipe
