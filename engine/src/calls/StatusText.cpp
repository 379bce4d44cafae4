#include "calls/StatusText.h"

#include "QorReturn.h"

namespace QorCliEngine {

std::string statusText(QorReturnT status) {
  return "status " + std::to_string(status) + " (" +
         Qor::QorReturn::strerror(status) + ')';
}

}  // namespace QorCliEngine
