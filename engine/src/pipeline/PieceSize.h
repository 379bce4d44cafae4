#ifndef QOR_CLI_ENGINE_PIECE_SIZE_H
#define QOR_CLI_ENGINE_PIECE_SIZE_H

#include <chrono>
#include <cstddef>
#include <string_view>

#include "sources/LineChunker.h"

namespace QorCliEngine {

// How much text a pipe command is given at once by an operator who may lose
// patience: a call cannot be interrupted, so that the slower a command is, the
// smaller are the pieces, down to single lines.
//
// The first pieces are small, since nothing is known of the command then. One
// thread.
class PieceSize {
 public:
  static constexpr std::size_t kFirst = 256;                        // bytes
  static constexpr std::size_t kLargest = LineChunker::kChunkSize;  // bytes
  static constexpr std::chrono::milliseconds kShort{25};
  static constexpr std::chrono::milliseconds kLong{100};

  // Returns the beginning of `text` that is to be given next: whole lines that
  // fit, or a first line that does not; all of it when it has no line feed.
  std::string_view cut(std::string_view text) const;

  // To be told how long the command took for a piece: more than kLong halves
  // the size, less than kShort doubles it.
  void note(std::chrono::nanoseconds time);

 private:
  std::size_t size_ = kFirst;
};

}  // namespace QorCliEngine

#endif
