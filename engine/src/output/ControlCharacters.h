#ifndef QOR_CLI_ENGINE_CONTROL_CHARACTERS_H
#define QOR_CLI_ENGINE_CONTROL_CHARACTERS_H

#include <string>
#include <string_view>

namespace QorCliEngine {
namespace ControlCharacters {

// `text` as a terminal can show it without obeying it: control characters are
// written as ^ and a character, as ^[ for an escape; those from 0x80 to 0x9F,
// as bytes or as characters in UTF-8, with M- before that. Line feeds, tabs and
// carriage returns before a line feed stay.
std::string visible(std::string_view text);

// As visible(), but for a part of a line: all are written so.
std::string visibleInLine(std::string_view text);

}  // namespace ControlCharacters
}  // namespace QorCliEngine

#endif
