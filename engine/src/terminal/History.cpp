#include "terminal/History.h"

#include <new>

#include "terminal/EditLibrary.h"

namespace QorCliEngine {
namespace {

EditLibrary const& edit() { return EditLibrary::get(); }

}  // namespace

History::History() : history_(edit().history_init()) {
  if (history_ == nullptr) throw std::bad_alloc();
  HistEvent event;
  edit().history(history_, &event, H_SETSIZE, kMostLines);
  edit().history(history_, &event, H_SETUNIQUE, 1);
  file_.load(history_, kMostLines);
}

History::~History() { edit().history_end(history_); }

void History::add(std::string const& line) {
  HistEvent event;
  bool const isNew =
      edit().history(history_, &event, H_ENTER, line.c_str()) > 0;
  if (isNew) file_.append(line);
}

std::vector<std::string> History::lines() const {
  std::vector<std::string> lines;
  HistEvent event;
  for (int found = edit().history(history_, &event, H_LAST); found >= 0;
       found = edit().history(history_, &event, H_PREV)) {
    lines.emplace_back(event.str);
  }
  return lines;
}

}  // namespace QorCliEngine
