#include <gtest/gtest.h>

#include "terminal/EditLibrary.h"
#include "terminal/LastWords.h"

namespace QorCliEngine {
namespace {

TEST(LastWordsTest, goFromTheNewestLineToTheOldest) {
  auto const& edit = EditLibrary::get();
  ::History* const history = edit.history_init();
  HistEvent event;
  edit.history(history, &event, H_SETSIZE, 10);
  for (char const* line : {"quit", "echo a |", "show \"two words\" ", "echo"}) {
    edit.history(history, &event, H_ENTER, line);
  }
  LastWords words(history);
  for (char const* word : {"echo", "\"two words\"", "quit", "", ""}) {
    EXPECT_EQ(words.next(), word);
  }
  edit.history_end(history);
}

}  // namespace
}  // namespace QorCliEngine
