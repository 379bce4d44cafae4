#include <gtest/gtest.h>

#include "terminal/EditLibrary.h"
#include "terminal/HistorySearch.h"

namespace QorCliEngine {
namespace {

class HistorySearchTest : public testing::Test {
 protected:
  HistorySearchTest() : history_(EditLibrary::get().history_init()) {
    HistEvent event;
    EditLibrary::get().history(history_, &event, H_SETSIZE, 10);
    for (char const* line : {"oldest echo", "show a", "echo b", "show c"}) {
      EditLibrary::get().history(history_, &event, H_ENTER, line);
    }
  }
  ~HistorySearchTest() override { EditLibrary::get().history_end(history_); }

  ::History* history_;
};

TEST_F(HistorySearchTest, findsTheNewestLineThatHoldsTheText) {
  HistorySearch search(history_);
  EXPECT_EQ(search.line(), "");
  for (char const* character : {"e", "c", "h", "o"}) search.add(character);
  EXPECT_EQ(search.text(), "echo");
  EXPECT_EQ(search.line(), "echo b");
  EXPECT_EQ(search.position(), 0U);
  EXPECT_FALSE(search.failed());
}

TEST_F(HistorySearchTest, goesOlder) {
  HistorySearch search(history_);
  search.add("echo");
  search.goOlder();
  EXPECT_EQ(search.line(), "oldest echo");
  EXPECT_EQ(search.position(), 7U);
  search.goOlder();
  EXPECT_TRUE(search.failed());
  EXPECT_EQ(search.line(), "oldest echo");
}

TEST_F(HistorySearchTest, undoGoesBackStepByStep) {
  HistorySearch search(history_);
  search.add("sho");
  search.add("x");
  EXPECT_TRUE(search.failed());
  EXPECT_EQ(search.line(), "show c");
  search.undo();
  search.goOlder();
  EXPECT_EQ(search.line(), "show a");
  search.undo();
  EXPECT_EQ(search.line(), "show c");
  search.undo();
  search.undo();
  EXPECT_EQ(search.text(), "");
  EXPECT_EQ(search.line(), "");
}

}  // namespace
}  // namespace QorCliEngine
