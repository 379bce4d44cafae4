#include "terminal/HistorySearch.h"

#include "terminal/EditLibrary.h"

namespace QorCliEngine {

HistorySearch::HistorySearch(::History* history) : steps_(1) {
  auto const& edit = EditLibrary::get();
  HistEvent event;
  for (int found = edit.history(history, &event, H_FIRST); found >= 0;
       found = edit.history(history, &event, H_NEXT)) {
    lines_.emplace_back(event.str);
  }
}

void HistorySearch::add(std::string const& character) {
  std::size_t const line = steps_.back().line;
  go(text() + character, line == 0 ? 1 : line);
}

void HistorySearch::goOlder() { go(text(), steps_.back().line + 1); }

void HistorySearch::go(std::string const& text, std::size_t from) {
  std::size_t line = from;
  while (line <= lines_.size() &&
         lines_[line - 1].find(text) == std::string::npos) {
    ++line;
  }
  bool const failed = line > lines_.size();
  steps_.push_back({text, failed ? steps_.back().line : line, failed});
}

void HistorySearch::undo() {
  if (steps_.size() > 1) steps_.pop_back();
}

std::string HistorySearch::line() const {
  std::size_t const line = steps_.back().line;
  return line == 0 ? "" : lines_[line - 1];
}

std::size_t HistorySearch::position() const {
  std::size_t const found = line().find(text());
  return found == std::string::npos ? 0 : found;
}

}  // namespace QorCliEngine
