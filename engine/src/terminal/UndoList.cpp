#include "terminal/UndoList.h"

#include <utility>

namespace QorCliEngine {
namespace {

// Whether one character has been typed at the cursor.
bool isTyped(UndoList::Line const& before, UndoList::Line const& now) {
  return now.text.size() == before.text.size() + 1 &&
         now.cursor == before.cursor + 1 &&
         now.text.compare(0, before.cursor, before.text, 0, before.cursor) ==
             0 &&
         now.text.compare(now.cursor, now.text.npos, before.text, before.cursor,
                          before.text.npos) == 0;
}

// Whether the character before the cursor ends a word.
bool endsWord(UndoList::Line const& line) {
  return line.cursor > 1 && line.text[line.cursor - 1] == L' ' &&
         line.text[line.cursor - 2] != L' ';
}

}  // namespace

void UndoList::note(Line line) {
  if (!lines_.empty() && lines_.back().text == line.text) {
    typing_ = typing_ && lines_.back().cursor == line.cursor;
    lines_.back().cursor = line.cursor;
    return;
  }
  bool const typed = !lines_.empty() && isTyped(lines_.back(), line);
  bool const goesOn = typed && typing_ && !endsWord(line);
  if (goesOn) lines_.pop_back();
  typing_ = typed;
  lines_.push_back(std::move(line));
  if (lines_.size() > kMostChanges + 1) lines_.pop_front();
}

UndoList::Line const& UndoList::undo() {
  if (lines_.size() > 1) lines_.pop_back();
  typing_ = false;
  return lines_.back();
}

}  // namespace QorCliEngine
