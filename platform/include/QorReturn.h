#ifndef QOR_RETURN_H
#define QOR_RETURN_H

#include "QorTypes.h"

// The framework's own status codes. Components may return others: 0 is success,
// everything else a failure.
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
  // Returns a short English text for `code`, without a line feed, even if the
  // framework does not define the code. Never null; static, not to be freed.
  // Callable from any thread.
  static char const* strerror(QorReturnT code) noexcept;
};

}  // namespace Qor

#endif
