#ifndef QOR_CLI_ENGINE_HISTORY_SEARCH_H
#define QOR_CLI_ENGINE_HISTORY_SEARCH_H

#include <histedit.h>

#include <cstddef>
#include <string>
#include <vector>

namespace QorCliEngine {

// A search through the history for the lines that hold a text, while the text
// is being typed. It begins after the newest line, with an empty text. One
// thread.
class HistorySearch {
 public:
  // Takes the lines of `history`, which is not owned.
  explicit HistorySearch(::History* history);

  // Adds a character, or a part of one, to the text: the line stays if it
  // still holds the text, and is the next older one that does otherwise.
  void add(std::string const& character);

  // Goes on to the next older line that holds the text.
  void goOlder();

  // Undoes the last of these steps, if there is any.
  void undo();

  std::string const& text() const { return steps_.back().text; }

  // Whether the last step led nowhere; the line is that of the one before.
  bool failed() const { return steps_.back().failed; }

  // The line that has been found, and where the text is in it. Empty before
  // the first.
  std::string line() const;
  std::size_t position() const;

 private:
  struct Step {
    std::string text;
    std::size_t line = 0;  // 0: after the newest; 1: the newest
    bool failed = false;
  };

  void go(std::string const& text, std::size_t from);

  std::vector<std::string> lines_;  // the newest first
  std::vector<Step> steps_;
};

}  // namespace QorCliEngine

#endif
