#ifndef QOR_CLI_ENGINE_HISTORY_H
#define QOR_CLI_ENGINE_HISTORY_H

#include <histedit.h>

#include <string>
#include <vector>

#include "terminal/HistoryFile.h"

namespace QorCliEngine {

// The command lines that were typed, in this session and, as far as there is a
// file for them, in those before it. One thread.
class History {
 public:
  static constexpr int kMostLines = 1000;

  History();
  ~History();
  History(History const&) = delete;
  History& operator=(History const&) = delete;

  // Keeps a line, in the file at once. A line that repeats the one before it is
  // kept once.
  void add(std::string const& line);

  // The lines, the oldest first.
  std::vector<std::string> lines() const;

  // For the line editor. Valid as long as this object.
  ::History* handle() const { return history_; }

 private:
  ::History* history_;
  HistoryFile file_;
};

}  // namespace QorCliEngine

#endif
