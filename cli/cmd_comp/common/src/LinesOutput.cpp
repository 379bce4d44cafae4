#include "LinesOutput.h"

#include "OperationTrace.h"

namespace QorCliUtilities {

void LinesOutput::push_back(std::string const& line) {
  OperationTrace const trace;
  lines_.push_back(line);
  trace.exit();
}

void LinesOutput::push_back(std::vector<std::string> const& lines) {
  OperationTrace const trace;
  // By index, since `lines` may be this sink's own list.
  std::size_t const count = lines.size();
  lines_.reserve(lines_.size() + count);
  for (std::size_t i = 0; i < count; ++i) lines_.push_back(lines[i]);
  trace.exit();
}

std::vector<std::string>& LinesOutput::getOutput() {
  OperationTrace const trace;
  trace.exit();
  return lines_;
}

void LinesOutput::clear() {
  OperationTrace const trace;
  lines_.clear();
  trace.exit();
}

}  // namespace QorCliUtilities
