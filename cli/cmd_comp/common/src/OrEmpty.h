#ifndef QOR_CLI_OR_EMPTY_H
#define QOR_CLI_OR_EMPTY_H

namespace QorCliUtilities {

// Returns `text`, or "" if it is null. Any thread.
inline char const* orEmpty(char const* text) {
  return text == nullptr ? "" : text;
}

}  // namespace QorCliUtilities

#endif
