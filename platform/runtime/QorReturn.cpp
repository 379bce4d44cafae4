#include "QorReturn.h"

namespace Qor {

char const* QorReturn::strerror(QorReturnT code) noexcept {
  switch (code) {
    case QOR_RETURN_FAILURE:
      return "Failure";
    case QOR_RETURN_SUCCESS:
      return "Success";
    case QOR_RETURN_INVALID_ARGUMENT:
      return "Invalid argument";
    case QOR_RETURN_NOT_FOUND:
      return "Not found";
    case QOR_RETURN_ALREADY_EXISTS:
      return "Already exists";
    case QOR_RETURN_NOT_SUPPORTED:
      return "Not supported";
    case QOR_RETURN_MISSING_DEPENDENCY:
      return "Missing dependency";
    default:
      return "Unknown return code";
  }
}

}  // namespace Qor
