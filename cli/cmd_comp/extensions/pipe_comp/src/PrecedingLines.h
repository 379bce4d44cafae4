#ifndef QOR_CLI_PRECEDING_LINES_H
#define QOR_CLI_PRECEDING_LINES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// The most recent lines of a text, oldest first, at most as many as asked for.
//
// Appending takes constant time a line whatever the number of lines kept: the
// lines stand in a ring, so that the newest takes the place of the oldest. Owns
// its copies of the lines. Used by one thread at a time.
class PrecedingLines {
 public:
  std::size_t size() const { return lines_.size(); }

  // Appends a copy of `line`. When `limit` lines or more are kept already, the
  // oldest is dropped first. `limit` is at least 1. Returns whether one was
  // dropped. When memory runs out, std::bad_alloc is thrown and the lines kept
  // are still in order.
  bool append(std::string_view line, std::size_t limit);

  // Appends all lines to `out`, oldest first, and forgets them. When memory
  // runs out, std::bad_alloc is thrown, and `out` and the lines are as before.
  void moveTo(std::vector<std::string>& out);

 private:
  void straighten();

  std::vector<std::string> lines_;
  std::size_t oldest_ = 0;  // index in lines_; 0 while the ring still grows
};

}  // namespace QorCliPipe

#endif
