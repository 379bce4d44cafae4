#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "terminal/UndoList.h"

namespace QorCliEngine {
namespace {

using Line = UndoList::Line;

// A line in which "^" stands for the cursor.
Line line(std::wstring text) {
  std::size_t const cursor = text.find(L'^');
  return {text.erase(cursor, 1), cursor};
}

std::wstring shown(Line const& line) {
  std::wstring text = line.text;
  return text.insert(line.cursor, L"^");
}

TEST(UndoListTest, aChangeIsTakenBackAfterTheOther) {
  struct {
    std::vector<std::wstring> noted;
    std::vector<std::wstring> undone;
  } const rows[] = {
      {{L"^"}, {L"^", L"^"}},
      {{L"^", L"a^"}, {L"^", L"^"}},
      // What is typed goes a word at a time, a blank with the word behind it.
      {{L"^", L"a^", L"ab^"}, {L"^"}},
      {{L"^", L"a^", L"ab^", L"ab ^", L"ab c^"}, {L"ab^", L"^"}},
      {{L"a^", L"a ^", L"a  ^", L"a  b^"}, {L"a^"}},
      {{L"x^y", L"xa^y", L"xab^y"}, {L"x^y"}},
      {{L"^", L"\u00e4^", L"\u00e4\u00df^"}, {L"^"}},
      // Going elsewhere ends a word, and so does another change.
      {{L"^", L"a^", L"^a", L"b^a"}, {L"^a", L"^"}},
      {{L"a b^", L"a ^", L"^", L"c^"}, {L"^", L"a ^", L"a b^"}},
      {{L"^", L"whole line^", L"whole line!^"}, {L"whole line^", L"^"}},
      {{L"ab^", L"^ab", L"b^"}, {L"^ab"}},
      // No character typed, although there is one more.
      {{L"ab^", L"xyz^"}, {L"ab^"}},
      {{L"ab^", L"abc^", L"xbcd^"}, {L"abc^", L"ab^"}},
      {{L"a^b", L"ab^c"}, {L"a^b"}},
  };
  for (auto const& row : rows) {
    UndoList list;
    for (auto const& text : row.noted) list.note(line(text));
    for (auto const& text : row.undone) EXPECT_EQ(shown(list.undo()), text);
  }
}

TEST(UndoListTest, whatIsTypedAfterwardsIsAChangeOfItsOwn) {
  UndoList list;
  for (wchar_t const* text : {L"^", L"a^", L"a ^"}) list.note(line(text));
  EXPECT_EQ(shown(list.undo()), L"a^");
  list.note(line(L"ab^"));
  EXPECT_EQ(shown(list.undo()), L"a^");
  EXPECT_EQ(shown(list.undo()), L"^");
}

TEST(UndoListTest, aNewLineHasNoChanges) {
  UndoList list;
  list.note(line(L"before^"));
  list.note(line(L"^"));
  list.clear();
  list.note(line(L"now^"));
  EXPECT_EQ(shown(list.undo()), L"now^");
}

TEST(UndoListTest, theOldestChangesAreForgotten) {
  UndoList list;
  auto const noted = [](std::size_t i) {
    return line(std::wstring(2 * i, L'x') + L'^');
  };
  for (std::size_t i = 0; i <= UndoList::kMostChanges + 5; ++i) {
    list.note(noted(i));
  }
  for (std::size_t i = 0; i < UndoList::kMostChanges; ++i) list.undo();
  EXPECT_EQ(shown(list.undo()), shown(noted(5)));
}

}  // namespace
}  // namespace QorCliEngine
