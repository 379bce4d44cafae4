#ifndef QOR_CLI_COMPILE_STACK_H
#define QOR_CLI_COMPILE_STACK_H

#include "CompileDemand.h"

namespace QorCliPipe {

// To be called before a regular expression is compiled, each time, for the
// stack may be another one. Throws Poco::RegularExpressionException when
// compiling may take more of it than is left. Any thread.
void checkCompileStack(CompileDemand const& demand);

// Whether the stack that is left can take it when machine code is made of the
// expression. Any thread.
bool hasStackForMachineCode(CompileDemand const& demand);

}  // namespace QorCliPipe

#endif
