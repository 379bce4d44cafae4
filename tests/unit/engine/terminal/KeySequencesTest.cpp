#include <gtest/gtest.h>

#include <ostream>

#include "terminal/KeySequences.h"

namespace QorCliEngine {
namespace {

using KeySequences::isOpen;
using KeySequences::meaning;

enum class Does {
  kNothing,
  kLeft,
  kRight,
  kUp,
  kDown,
  kHome,
  kEnd,
  kWordLeft,
  kWordRight,
  kDelete,
  kDeleteWord,
};

// In the order above.
constexpr wchar_t const* kHandedOn[] = {
    L"",     L"\002",  L"\006",  L"\033[A",  L"\033[B", L"\001",
    L"\005", L"\033b", L"\033f", L"\033[3~", L"\033d"};

struct Row {
  char const* key;
  char const* terminals;
  wchar_t const* sequence;
  Does does;
};

constexpr Row kRows[] = {
    {"Left", "xterm screen tmux linux PuTTY", L"\033[D", Does::kLeft},
    {"Right", "xterm screen tmux linux PuTTY", L"\033[C", Does::kRight},
    {"Up", "xterm screen tmux linux PuTTY", L"\033[A", Does::kUp},
    {"Down", "xterm screen tmux linux PuTTY", L"\033[B", Does::kDown},
    {"Left", "application mode; PuTTY with Ctrl", L"\033OD", Does::kLeft},
    {"Right", "application mode; PuTTY with Ctrl", L"\033OC", Does::kRight},
    {"Up", "application mode; PuTTY with Ctrl", L"\033OA", Does::kUp},
    {"Down", "application mode; PuTTY with Ctrl", L"\033OB", Does::kDown},
    {"Shift-Left", "xterm tmux", L"\033[1;2D", Does::kLeft},
    {"Shift-Right", "xterm tmux", L"\033[1;2C", Does::kRight},
    {"Shift-Up", "xterm tmux", L"\033[1;2A", Does::kUp},
    {"Alt-Left", "xterm tmux", L"\033[1;3D", Does::kWordLeft},
    {"Alt-Right", "xterm tmux", L"\033[1;3C", Does::kWordRight},
    {"Alt-Up", "xterm tmux", L"\033[1;3A", Does::kUp},
    {"Alt-Left", "PuTTY screen", L"\033\033[D", Does::kWordLeft},
    {"Alt-Right", "PuTTY screen", L"\033\033[C", Does::kWordRight},
    {"Alt-Left", "PuTTY, application mode", L"\033\033OD", Does::kWordLeft},
    {"Alt-Shift-Left", "xterm tmux", L"\033[1;4D", Does::kWordLeft},
    {"Ctrl-Left", "xterm tmux", L"\033[1;5D", Does::kWordLeft},
    {"Ctrl-Right", "xterm tmux", L"\033[1;5C", Does::kWordRight},
    {"Ctrl-Up", "xterm tmux", L"\033[1;5A", Does::kUp},
    {"Ctrl-Down", "xterm tmux", L"\033[1;5B", Does::kDown},
    {"Ctrl-Left", "xterm of old", L"\033[5D", Does::kWordLeft},
    {"Ctrl-Left", "xterm of old", L"\033O5D", Does::kWordLeft},
    {"Ctrl-Left", "screen", L"\033Od", Does::kWordLeft},
    {"Ctrl-Right", "screen", L"\033Oc", Does::kWordRight},
    {"Ctrl-Shift-Left", "xterm tmux", L"\033[1;6D", Does::kWordLeft},
    {"Ctrl-Alt-Right", "xterm tmux", L"\033[1;7C", Does::kWordRight},
    {"Ctrl-Alt-Shift-Right", "xterm tmux", L"\033[1;8C", Does::kWordRight},
    {"Home", "xterm", L"\033[H", Does::kHome},
    {"End", "xterm", L"\033[F", Does::kEnd},
    {"Home", "xterm, application mode", L"\033OH", Does::kHome},
    {"End", "xterm, application mode", L"\033OF", Does::kEnd},
    {"Home", "screen tmux linux PuTTY", L"\033[1~", Does::kHome},
    {"End", "screen tmux linux PuTTY", L"\033[4~", Does::kEnd},
    {"Home", "rxvt", L"\033[7~", Does::kHome},
    {"End", "rxvt", L"\033[8~", Does::kEnd},
    {"Ctrl-Home", "xterm tmux", L"\033[1;5H", Does::kHome},
    {"Ctrl-End", "xterm tmux", L"\033[1;5F", Does::kEnd},
    {"Delete", "xterm screen tmux linux PuTTY", L"\033[3~", Does::kDelete},
    {"Shift-Delete", "xterm tmux", L"\033[3;2~", Does::kDelete},
    {"Ctrl-Delete", "xterm tmux", L"\033[3;5~", Does::kDeleteWord},
    {"Alt-Delete", "PuTTY screen", L"\033\033[3~", Does::kDeleteWord},
    {"Insert", "xterm screen tmux linux PuTTY", L"\033[2~", Does::kNothing},
    {"Ctrl-Insert", "xterm tmux", L"\033[2;5~", Does::kNothing},
    {"PageUp", "xterm screen tmux linux PuTTY", L"\033[5~", Does::kNothing},
    {"PageDown", "xterm screen tmux linux PuTTY", L"\033[6~", Does::kNothing},
    {"Shift-PageUp", "xterm tmux", L"\033[5;2~", Does::kNothing},
    {"Shift-Tab", "xterm screen tmux linux PuTTY", L"\033[Z", Does::kNothing},
    {"F1", "xterm screen tmux", L"\033OP", Does::kNothing},
    {"F4", "xterm screen tmux", L"\033OS", Does::kNothing},
    {"F1", "linux", L"\033[[A", Does::kNothing},
    {"F5", "linux", L"\033[[E", Does::kNothing},
    {"F1", "PuTTY", L"\033[11~", Does::kNothing},
    {"F4", "PuTTY", L"\033[14~", Does::kNothing},
    {"F5", "xterm screen tmux PuTTY", L"\033[15~", Does::kNothing},
    {"F12", "xterm screen tmux linux PuTTY", L"\033[24~", Does::kNothing},
    {"Shift-F1", "linux", L"\033[25~", Does::kNothing},
    {"Shift-F8", "linux", L"\033[34~", Does::kNothing},
    {"Ctrl-F1", "xterm tmux", L"\033[1;5P", Does::kNothing},
    {"Ctrl-F5", "xterm tmux", L"\033[15;5~", Does::kNothing},
    {"Alt-F1", "PuTTY", L"\033\033[11~", Does::kNothing},
    {"keypad 5", "xterm", L"\033[E", Does::kNothing},
    {"keypad Enter", "PuTTY, application mode", L"\033OM", Does::kNothing},
    {"a mouse report", "xterm", L"\033[<0;10;20M", Does::kNothing},
    {"an answer to a query", "xterm", L"\033[?1;2c", Does::kNothing},
};

std::ostream& operator<<(std::ostream& stream, Row const& row) {
  return stream << row.key << ", " << row.terminals;
}

class KeySequencesTest : public testing::TestWithParam<Row> {};

TEST_P(KeySequencesTest, aKeyEditsOrDoesNothing) {
  std::wstring const sequence = GetParam().sequence;
  for (std::size_t size = 1; size < sequence.size(); ++size) {
    EXPECT_TRUE(isOpen(sequence.substr(0, size))) << size;
  }
  EXPECT_FALSE(isOpen(sequence));
  EXPECT_EQ(meaning(sequence),
            kHandedOn[static_cast<std::size_t>(GetParam().does)]);
}

INSTANTIATE_TEST_SUITE_P(Keys, KeySequencesTest, testing::ValuesIn(kRows));

TEST(KeySequencesTest, anEscapeAndACharacterAreHandedOn) {
  for (std::wstring const sequence :
       {L"\033b", L"\033.", L"\033\177", L"\033\r", L"\033\033x"}) {
    EXPECT_FALSE(isOpen(sequence));
    EXPECT_EQ(meaning(sequence), sequence);
  }
}

TEST(KeySequencesTest, escapesAloneAreNotCollectedForEver) {
  EXPECT_TRUE(isOpen(L"\033\033"));
  EXPECT_FALSE(isOpen(L"\033\033\033"));
  EXPECT_EQ(meaning(L"\033\033\033"), L"\033\033\033");
}

TEST(KeySequencesTest, aControlCharacterCutsASequenceShort) {
  for (std::wstring const sequence : {L"\033[1;\r", L"\033[\r", L"\033O\r"}) {
    EXPECT_FALSE(isOpen(sequence));
    EXPECT_EQ(meaning(sequence), L"\r");
  }
}

TEST(KeySequencesTest, aSequenceWithoutAnEndIsGivenUp) {
  std::wstring sequence = L"\033[";
  while (isOpen(sequence)) {
    ASSERT_LT(sequence.size(), 100U);
    sequence += L'1';
  }
  EXPECT_EQ(meaning(sequence), L"");
}

}  // namespace
}  // namespace QorCliEngine
