#include "CompileStack.h"

#include <Poco/Exception.h>

#include "StackLeft.h"

namespace QorCliPipe {
namespace {

// What compiling takes of the stack, measured and rounded up generously: so
// much for any pattern, and so much for each level of nesting.
constexpr std::size_t kCompileStack = 24 * 1024;  // bytes
constexpr std::size_t kCompileStackPerLevel = 1024;

}  // namespace

void checkCompileStack(std::size_t levels) {
  std::size_t const left = stackLeft();
  if (left < kCompileStack ||
      levels > (left - kCompileStack) / kCompileStackPerLevel) {
    throw Poco::RegularExpressionException("pattern too deeply nested");
  }
}

}  // namespace QorCliPipe
