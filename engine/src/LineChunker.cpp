#include "LineChunker.h"

#include <algorithm>

namespace QorCliEngine {

void LineChunker::append(std::string_view text) {
  std::size_t const before = buffer_.size();
  buffer_ += text;
  noteAdded(before);
}

std::string const& LineChunker::takeLines() {
  chunk_.swap(buffer_);
  buffer_.assign(chunk_, lineEnd_, std::string::npos);
  chunk_.resize(lineEnd_);
  lineEnd_ = 0;
  return chunk_;
}

std::string const& LineChunker::takeRest() {
  if (buffer_.size() > lineEnd_) append("\n");
  return takeLines();
}

std::size_t LineChunker::room() const {
  return buffer_.size() < kChunkSize ? kChunkSize - buffer_.size() : kChunkSize;
}

// Looks at what was added only: a long line comes in many pieces.
void LineChunker::noteAdded(std::size_t from) {
  auto const added = buffer_.begin() + static_cast<std::ptrdiff_t>(from);
  std::replace(added, buffer_.end(), '\0', ' ');
  std::size_t const lineFeed =
      std::string_view(buffer_).substr(from).rfind('\n');
  if (lineFeed != std::string_view::npos) lineEnd_ = from + lineFeed + 1;
}

}  // namespace QorCliEngine
