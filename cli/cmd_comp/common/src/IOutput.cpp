#include "IOutput.h"

#include "Error.h"
#include "OperationTrace.h"

namespace QorCliUtilities {

std::vector<std::string>& IOutput::getOutput() {
  OperationTrace const trace;
  throw Error("Output sink has no storage", 0);
}

}  // namespace QorCliUtilities
