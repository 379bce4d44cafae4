#include "terminal/LastWords.h"

#include "commands/CommandLine.h"

namespace QorCliEngine {

std::string LastWords::next() {
  for (lines_.goOlder(); !lines_.failed(); lines_.goOlder()) {
    std::string word = CommandLine::lastWord(lines_.line());
    if (!word.empty()) return word;
  }
  return "";
}

}  // namespace QorCliEngine
