#ifndef QOR_CLI_COMPILE_STACK_H
#define QOR_CLI_COMPILE_STACK_H

#include <cstddef>

namespace QorCliPipe {

// To be called before a regular expression is compiled, each time, for the
// stack may be another one. `levels` is how deeply its groups are nested.
// Throws Poco::RegularExpressionException when that is more than the stack that
// is left can take. Any thread.
void checkCompileStack(std::size_t levels);

}  // namespace QorCliPipe

#endif
