#include "PrecedingLines.h"

#include <algorithm>
#include <iterator>

#include "LineFreeList.h"

namespace QorCliPipe {

bool PrecedingLines::append(std::string_view line, std::size_t limit) {
  if (lines_.size() < limit) {
    rotate();
    appendLine(line, lines_);
    return false;
  }
  lines_[oldest_].assign(line);
  oldest_ = oldest_ + 1 == lines_.size() ? 0 : oldest_ + 1;
  return true;
}

void PrecedingLines::moveTo(std::vector<std::string>& out) {
  rotate();
  out.insert(out.end(), std::make_move_iterator(lines_.begin()),
             std::make_move_iterator(lines_.end()));
  lines_.clear();
}

void PrecedingLines::rotate() {
  std::rotate(lines_.begin(),
              lines_.begin() + static_cast<std::ptrdiff_t>(oldest_),
              lines_.end());
  oldest_ = 0;
}

}  // namespace QorCliPipe
