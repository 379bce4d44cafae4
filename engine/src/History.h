#ifndef QOR_CLI_ENGINE_HISTORY_H
#define QOR_CLI_ENGINE_HISTORY_H

#include <histedit.h>

#include <string>

namespace QorCliEngine {

// The command lines that were typed, kept between runs in the user's state
// directory: $XDG_STATE_HOME/qorcli/history, or below ~/.local/state. Without
// such a directory they are kept in memory only.
class History {
 public:
  static constexpr int kMostLines = 1000;

  History();
  // Writes the file; failing to is no error.
  ~History();
  History(History const&) = delete;
  History& operator=(History const&) = delete;

  // A line that repeats the one before it is kept once.
  void add(std::string const& line);

  // For the line editor. Valid as long as this object.
  ::History* handle() const { return history_; }

 private:
  ::History* history_;
  std::string file_;  // empty: none
};

}  // namespace QorCliEngine

#endif
