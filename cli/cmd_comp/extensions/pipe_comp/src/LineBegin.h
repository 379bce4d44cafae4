#ifndef QOR_CLI_LINE_BEGIN_H
#define QOR_CLI_LINE_BEGIN_H

#include <cstddef>
#include <cstring>
#include <string_view>

namespace QorCliPipe {

// The index of the first byte of the line in which the byte at `place`, below
// text.size(), stands. A line feed belongs to the line that it ends.
inline std::size_t beginOfLine(std::string_view text, std::size_t place) {
  void const* const feed = memrchr(text.data(), '\n', place);
  if (feed == nullptr) return 0;
  return static_cast<std::size_t>(static_cast<char const*>(feed) -
                                  text.data()) +
         1;
}

}  // namespace QorCliPipe

#endif
