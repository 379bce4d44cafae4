#ifndef QOR_CLI_ENGINE_STATUS_TEXT_H
#define QOR_CLI_ENGINE_STATUS_TEXT_H

#include <string>

#include "QorTypes.h"

namespace QorCliEngine {

// Returns a component's status as messages show it: "status N (text)".
std::string statusText(QorReturnT status);

}  // namespace QorCliEngine

#endif
