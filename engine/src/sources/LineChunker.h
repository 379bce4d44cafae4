#ifndef QOR_CLI_ENGINE_LINE_CHUNKER_H
#define QOR_CLI_ENGINE_LINE_CHUNKER_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace QorCliEngine {

// Cuts a stream of bytes into chunks of whole lines.
//
// A line that is longer than a chunk makes a longer chunk. A last line without
// a line feed gets one. A NUL byte, which a text across the plug-ins' border
// cannot carry, becomes a blank. One thread.
//
// A chunk is small enough for all that a call allocates to stay below what the
// C library gives back to the system at once, which would be asked for again,
// page by page, in the next call.
class LineChunker {
 public:
  static constexpr std::size_t kChunkSize = 128 * 1024;  // bytes

  // Lets `read(char* place, std::size_t size)` write up to `size` bytes, of
  // which there is at least one, and takes as many as it says that it wrote.
  // When it throws, nothing is added.
  template <class Read>
  void fill(Read const& read);

  void append(std::string_view text);

  // Gives a last line that lacks its line feed one.
  void endLine();

  // Whether a chunk has come together.
  bool full() const { return size_ >= kChunkSize && lineEnd_ != 0; }

  // The whole lines that have come in and have not been taken; may be empty.
  // There is a NUL byte after them. Valid until the next call that takes.
  std::string_view takeLines();

  // As takeLines, with what there is of a last line: to be called at the end.
  std::string_view takeRest();

 private:
  std::size_t room() const;
  void makeRoom(std::size_t size);
  void noteAdded(std::size_t size);

  // Of a buffer's bytes only the first are in use. It is never made smaller, so
  // that what is read is not cleared in memory beforehand.
  std::vector<char> buffer_;
  std::vector<char> chunk_;  // what was taken last
  std::size_t size_ = 0;     // in use, of buffer_
  std::size_t lineEnd_ = 0;  // after the last line feed in buffer_
};

template <class Read>
void LineChunker::fill(Read const& read) {
  std::size_t const size = room();
  makeRoom(size);
  noteAdded(read(&buffer_[size_], size));
}

}  // namespace QorCliEngine

#endif
