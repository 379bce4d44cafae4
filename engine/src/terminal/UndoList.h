#ifndef QOR_CLI_ENGINE_UNDO_LIST_H
#define QOR_CLI_ENGINE_UNDO_LIST_H

#include <cstddef>
#include <deque>
#include <string>

namespace QorCliEngine {

// What a line was before each change, to go back to. Characters typed one
// after the other are one change, up to the end of a word. One thread.
class UndoList {
 public:
  static constexpr std::size_t kMostChanges = 100;  // the oldest are forgotten

  // A line, and the number of characters before the cursor.
  struct Line {
    std::wstring text;
    std::size_t cursor = 0;
  };

  // Forgets all changes: what is noted next is a new line.
  void clear() { lines_.clear(); }

  // Tells what the line is now.
  void note(Line line);

  // Takes the last change back and returns the line before it, as it was noted.
  // The line stays when there is no change left. To be called after note().
  Line const& undo();

 private:
  std::deque<Line> lines_;  // the last is what the line is now
  bool typing_ = false;     // the last change may go on
};

}  // namespace QorCliEngine

#endif
