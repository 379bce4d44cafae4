#include "PipeOutput1.h"

namespace QorCliPipe {

void PipeOutput1::push_back(std::string const& line) { lines_.push_back(line); }

void PipeOutput1::push_back(std::vector<std::string> const& lines) {
  // By index: `lines` may be this sink's own.
  std::size_t const count = lines.size();
  lines_.reserve(lines_.size() + count);
  for (std::size_t i = 0; i < count; ++i) lines_.push_back(lines[i]);
}

std::vector<std::string>& PipeOutput1::getOutput() { return lines_; }

void PipeOutput1::clear() { lines_.clear(); }

}  // namespace QorCliPipe
