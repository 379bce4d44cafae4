#ifndef QOR_CLI_LOWER_CASE_H
#define QOR_CLI_LOWER_CASE_H

#include <algorithm>
#include <cctype>
#include <string>

namespace QorCliUtilities {

// Returns `text` with std::tolower applied to each byte: in the "C" locale,
// only to the letters A to Z. Callable from any thread as long as none sets the
// locale.
inline std::string lowerCased(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return static_cast<char>(std::tolower(c));
  });
  return text;
}

}  // namespace QorCliUtilities

#endif
