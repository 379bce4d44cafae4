#ifndef QOR_RETURN_H
#define QOR_RETURN_H

#include "QorTypes.h"

// The status codes that the framework itself returns. Components may return
// others; 0 is success and everything else a failure.
enum QorReturnCode : QorReturnT {
  QOR_RETURN_FAILURE = -1,
  QOR_RETURN_SUCCESS = 0,
  QOR_RETURN_INVALID_ARGUMENT = 1,
  QOR_RETURN_NOT_FOUND = 2,
  QOR_RETURN_ALREADY_EXISTS = 3,
  QOR_RETURN_NOT_SUPPORTED = 4,
  QOR_RETURN_MISSING_DEPENDENCY = 5,
};

namespace Qor {

// Texts for status codes.
class __attribute__((visibility("default"))) QorReturn {
 public:
  // Returns a short English text for `code`, without a line end. Codes that the
  // framework does not define have a text too. Never null; the text is static
  // and must not be freed. Never throws. Callable from any thread.
  static char const* strerror(QorReturnT code) noexcept;
};

}  // namespace Qor

#endif
