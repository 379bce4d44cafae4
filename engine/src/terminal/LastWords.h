#ifndef QOR_CLI_ENGINE_LAST_WORDS_H
#define QOR_CLI_ENGINE_LAST_WORDS_H

#include <histedit.h>

#include <string>

#include "terminal/HistorySearch.h"

namespace QorCliEngine {

// The last words of the lines in a history, from the newest to the oldest. One
// thread.
class LastWords {
 public:
  // Takes the lines of `history`, which is not owned.
  explicit LastWords(::History* history) : lines_(history) {}

  // The last word of the next older line that has one, with its quotes. Empty
  // after the oldest.
  std::string next();

 private:
  HistorySearch lines_;
};

}  // namespace QorCliEngine

#endif
