#ifndef QOR_CLI_ENGINE_KEY_SEQUENCES_H
#define QOR_CLI_ENGINE_KEY_SEQUENCES_H

#include <string>

namespace QorCliEngine {

// Keys that a terminal sends as several characters, of which the first is an
// escape: cursor keys, function keys, and those pressed together with Ctrl, Alt
// or Shift. Terminals do not agree on them; here, each key that edits a line
// has one sequence of its own, and every other means nothing.
namespace KeySequences {

constexpr wchar_t kEscape = 0x1B;
constexpr wchar_t kDelete = 0x7F;

// What a key that edits has to be bound to, beside the usual control keys.
constexpr wchar_t kUp[] = L"\033[A";
constexpr wchar_t kDown[] = L"\033[B";
constexpr wchar_t kDeleteKey[] = L"\033[3~";
constexpr wchar_t kPaste[] = L"\033[200~";
constexpr wchar_t kPasteEnd[] = L"\033[201~";

// Whether more characters belong to `sequence`, which begins with an escape.
bool isOpen(std::wstring const& sequence);

// What stands for `sequence`, which is not open: empty when the key means
// nothing, the sequence itself when it is no cursor or function key but an
// escape and a character. When a control character has cut a sequence short,
// only that is left of it.
std::wstring meaning(std::wstring const& sequence);

}  // namespace KeySequences
}  // namespace QorCliEngine

#endif
