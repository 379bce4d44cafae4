#include "pipeline/PieceSize.h"

#include <algorithm>

namespace QorCliEngine {

std::string_view PieceSize::cut(std::string_view text) const {
  if (text.size() <= size_) return text;
  std::size_t end = text.rfind('\n', size_ - 1);
  if (end == std::string_view::npos) end = text.find('\n', size_);
  return end == std::string_view::npos ? text : text.substr(0, end + 1);
}

void PieceSize::note(std::chrono::nanoseconds time) {
  if (time > kLong) size_ = std::max<std::size_t>(size_ / 2, 1);
  if (time < kShort) size_ = std::min(size_ * 2, kLargest);
}

}  // namespace QorCliEngine
