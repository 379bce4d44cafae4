#include "terminal/KeySequences.h"

#include <cstddef>
#include <cwchar>

namespace QorCliEngine {
namespace KeySequences {
namespace {

constexpr std::size_t kLongest = 32;  // characters

// As the usual control and escape keys.
constexpr wchar_t kLeft[] = L"\002";
constexpr wchar_t kRight[] = L"\006";
constexpr wchar_t kHome[] = L"\001";
constexpr wchar_t kEnd[] = L"\005";
constexpr wchar_t kWordLeft[] = L"\033b";
constexpr wchar_t kWordRight[] = L"\033f";
constexpr wchar_t kDeleteWord[] = L"\033d";

// A key alone, and together with Ctrl or Alt.
struct Key {
  wchar_t final;
  wchar_t const* number;  // before a final "~"
  wchar_t const* plain;
  wchar_t const* withModifier;
};

constexpr Key kKeys[] = {
    {L'A', L"", kUp, kUp},
    {L'B', L"", kDown, kDown},
    {L'C', L"", kRight, kWordRight},
    {L'D', L"", kLeft, kWordLeft},
    // Some send a small letter together with Ctrl or Shift.
    {L'a', L"", kUp, kUp},
    {L'b', L"", kDown, kDown},
    {L'c', L"", kWordRight, kWordRight},
    {L'd', L"", kWordLeft, kWordLeft},
    {L'H', L"", kHome, kHome},
    {L'F', L"", kEnd, kEnd},
    {L'~', L"1", kHome, kHome},
    {L'~', L"7", kHome, kHome},
    {L'~', L"4", kEnd, kEnd},
    {L'~', L"8", kEnd, kEnd},
    {L'~', L"3", kDeleteKey, kDeleteWord},
    {L'~', L"200", kPaste, kPaste},
};

bool isParameter(wchar_t c) { return c >= L' ' && c <= L'?'; }

bool isControl(wchar_t c) { return c < L' ' || c == kDelete; }

// Where the sequence's introducer is: after one escape or two.
std::size_t introducer(std::wstring const& sequence) {
  return sequence.find_first_not_of(kEscape);
}

// The character after "[[": some terminals' function keys.
bool isDoubleBracket(std::wstring const& sequence, std::size_t begin) {
  return sequence.compare(begin, 2, L"[[") == 0;
}

// A number that follows the semicolon is 1 more than the sum of 1 for Shift, 2
// for Alt, 4 for Ctrl, 8 for another key like Alt. Some have only that number.
bool hasModifier(std::wstring const& parameters, wchar_t final) {
  constexpr unsigned long kModifiers = 2 | 4 | 8;
  std::size_t const semicolon = parameters.rfind(L';');
  bool const alone = semicolon == std::wstring::npos;
  if (parameters.empty() || (alone && final == L'~')) return false;
  std::wstring const number =
      alone ? parameters : parameters.substr(semicolon + 1);
  unsigned long const value = std::wcstoul(number.c_str(), nullptr, 10);
  return value > 1 && ((value - 1) & kModifiers) != 0;
}

std::wstring meaningOf(std::wstring const& parameters, wchar_t final,
                       bool alt) {
  bool const report = !parameters.empty() && parameters.front() >= L'<';
  if (report) return L"";  // of the mouse, or an answer
  bool const numbered = final == L'~';
  std::wstring const number = parameters.substr(0, parameters.find(L';'));
  bool const modified = alt || hasModifier(parameters, final);
  for (Key const& key : kKeys) {
    if (key.final != final || (numbered && number != key.number)) continue;
    return modified ? key.withModifier : key.plain;
  }
  return L"";
}

}  // namespace

bool isOpen(std::wstring const& sequence) {
  std::size_t const begin = introducer(sequence);
  if (begin == std::wstring::npos) return sequence.size() < 3;
  wchar_t const first = sequence[begin];
  if (first != L'[' && first != L'O') return false;
  if (sequence.size() >= kLongest || sequence.size() == begin + 1) {
    return sequence.size() < kLongest;
  }
  if (isDoubleBracket(sequence, begin)) return sequence.size() == begin + 2;
  return isParameter(sequence.back());
}

std::wstring meaning(std::wstring const& sequence) {
  std::size_t const begin = introducer(sequence);
  bool const isKey = begin != std::wstring::npos && sequence.size() > begin + 1;
  if (!isKey) return sequence;
  wchar_t const final = sequence.back();
  if (isControl(final)) return {final};
  if (isDoubleBracket(sequence, begin)) return L"";
  std::wstring const parameters =
      sequence.substr(begin + 1, sequence.size() - begin - 2);
  return meaningOf(parameters, final, begin > 1);
}

}  // namespace KeySequences
}  // namespace QorCliEngine
