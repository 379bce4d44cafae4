#include "IOutput.h"

#include "Error.h"

namespace QorCliUtilities {

std::vector<std::string>& IOutput::getOutput() {
  throw Error("Output sink has no storage", 0);
}

}  // namespace QorCliUtilities
