#include "output/ControlCharacters.h"

#include <cstddef>

namespace QorCliEngine {
namespace ControlCharacters {
namespace {

unsigned char at(std::string_view text, std::size_t i) {
  return i < text.size() ? static_cast<unsigned char>(text[i]) : '\0';
}

bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Of the character in UTF-8 that begins at `i`; 1 for a byte that begins none.
std::size_t sizeOfCharacter(std::string_view text, std::size_t i) {
  unsigned char const lead = at(text, i);
  std::size_t const size = lead < 0xC2   ? 1
                           : lead < 0xE0 ? 2
                           : lead < 0xF0 ? 3
                           : lead < 0xF5 ? 4
                                         : 1;
  for (std::size_t k = 1; k < size; ++k) {
    if (!isContinuation(at(text, i + k))) return 1;
  }
  return size;
}

// Whether a terminal does with the character at `i` what a text means.
bool isLayout(std::string_view text, std::size_t i) {
  return text[i] == '\n' || text[i] == '\t' ||
         (text[i] == '\r' && at(text, i + 1) == '\n');
}

bool isLowControl(unsigned char byte) { return byte < ' ' || byte == 0x7F; }

bool isHighControl(unsigned char byte) { return byte >= 0x80 && byte < 0xA0; }

void addCaret(std::string& result, unsigned char byte) {
  result += '^';
  result += static_cast<char>((byte & 0x7F) ^ 0x40);
}

// Adds the character at `i` and returns how many bytes it has.
std::size_t addVisible(std::string& result, std::string_view text,
                       std::size_t i, bool inLine) {
  std::size_t const size = sizeOfCharacter(text, i);
  unsigned char const last = at(text, i + size - 1);
  bool const isHigh =
      isHighControl(last) && (size == 1 || (size == 2 && at(text, i) == 0xC2));
  if (isHigh) result += "M-";
  if (isHigh ||
      (size == 1 && isLowControl(last) && (inLine || !isLayout(text, i)))) {
    addCaret(result, last);
  } else {
    result += text.substr(i, size);
  }
  return size;
}

std::string madeVisible(std::string_view text, bool inLine) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    i += addVisible(result, text, i, inLine);
  }
  return result;
}

}  // namespace

std::string visible(std::string_view text) { return madeVisible(text, false); }

std::string visibleInLine(std::string_view text) {
  return madeVisible(text, true);
}

}  // namespace ControlCharacters
}  // namespace QorCliEngine
