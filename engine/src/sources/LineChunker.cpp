#include "sources/LineChunker.h"

#include <cstring>
#include <utility>

namespace QorCliEngine {
namespace {

char* findNul(char* begin, char const* end) {
  return static_cast<char*>(
      std::memchr(begin, '\0', static_cast<std::size_t>(end - begin)));
}

}  // namespace

void LineChunker::append(std::string_view text) {
  makeRoom(text.size());
  text.copy(&buffer_[size_], text.size());
  noteAdded(text.size());
}

std::string_view LineChunker::takeLines() {
  if (lineEnd_ == 0) return "";
  std::swap(buffer_, chunk_);
  std::string_view const lines(chunk_.data(), std::exchange(lineEnd_, 0));
  std::string_view const rest(lines.data() + lines.size(),
                              std::exchange(size_, 0) - lines.size());
  append(rest);
  chunk_[lines.size()] = '\0';
  return lines;
}

std::string_view LineChunker::takeRest() {
  endLine();
  return takeLines();
}

void LineChunker::endLine() {
  if (size_ > lineEnd_) append("\n");
}

std::size_t LineChunker::room() const {
  return size_ < kChunkSize ? kChunkSize - size_ : kChunkSize;
}

void LineChunker::makeRoom(std::size_t size) {
  std::size_t const needed = size_ + size + 1;
  if (buffer_.size() < needed) buffer_.resize(needed);
}

// Looks at what was added only: a long line comes in many pieces.
void LineChunker::noteAdded(std::size_t size) {
  char* const begin = &buffer_[size_];
  char* const end = begin + size;
  for (char* nul = begin; (nul = findNul(nul, end)) != nullptr;) *nul = ' ';
  // string_view::rfind would look at a long line byte by byte.
  void const* const lineFeed = ::memrchr(begin, '\n', size);
  if (lineFeed != nullptr) {
    lineEnd_ = static_cast<std::size_t>(static_cast<char const*>(lineFeed) -
                                        buffer_.data()) +
               1;
  }
  size_ += size;
}

}  // namespace QorCliEngine
