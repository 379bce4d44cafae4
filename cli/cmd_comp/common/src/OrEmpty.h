#ifndef QOR_CLI_OR_EMPTY_H
#define QOR_CLI_OR_EMPTY_H

namespace QorCliUtilities {

// Returns `text`, or an empty text for a null pointer.
inline char const* orEmpty(char const* text) {
  return text == nullptr ? "" : text;
}

}  // namespace QorCliUtilities

#endif
