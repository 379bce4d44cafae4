#ifndef QOR_CLI_PRECEDING_LINES_H
#define QOR_CLI_PRECEDING_LINES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// A ring buffer of the most recent lines of a text.
//
// Appending a line takes constant time, since the newest replaces the oldest.
// Owns its copies of the lines. Used by one thread at a time.
class PrecedingLines {
 public:
  std::size_t size() const { return lines_.size(); }

  // Appends a copy of `line`. If there are already `limit` lines or more,
  // replaces the oldest one. `limit` is at least 1. Returns whether a line was
  // replaced. Throws std::bad_alloc if memory runs out; the lines are still in
  // order.
  bool append(std::string_view line, std::size_t limit);

  // Moves all lines to the end of `out`, oldest first. Throws std::bad_alloc if
  // memory runs out, leaving `out` and the lines unchanged.
  void moveTo(std::vector<std::string>& out);

 private:
  void rotate();

  std::vector<std::string> lines_;
  std::size_t oldest_ = 0;  // index in lines_; 0 while the buffer grows
};

}  // namespace QorCliPipe

#endif
