#include "CompileStack.h"

#include <Poco/Exception.h>

#include <algorithm>
#include <cstddef>

#include "StackLeft.h"

namespace QorCliPipe {
namespace {

// What compiling takes of the stack, measured and rounded up generously: so
// much for any pattern, for each level of nesting, and for each choice, up to
// so many; more of them when machine code is made.
constexpr std::size_t kCompileStack = 24 * 1024;  // bytes
constexpr std::size_t kCompileStackPerLevel = 1024;
constexpr std::size_t kCompileStackPerChoice = 192;
constexpr std::size_t kMostChoices = 1000;
constexpr std::size_t kMostChoicesForMachineCode = 10000;

bool hasStackFor(CompileDemand const& demand, std::size_t mostChoices) {
  std::size_t const left = stackLeft();
  std::size_t const others =
      kCompileStack +
      std::min(demand.choices, mostChoices) * kCompileStackPerChoice;
  return left >= others &&
         demand.levels <= (left - others) / kCompileStackPerLevel;
}

}  // namespace

void checkCompileStack(CompileDemand const& demand) {
  if (!hasStackFor(demand, kMostChoices)) {
    throw Poco::RegularExpressionException("pattern too deeply nested");
  }
}

bool hasStackForMachineCode(CompileDemand const& demand) {
  return hasStackFor(demand, kMostChoicesForMachineCode);
}

}  // namespace QorCliPipe
