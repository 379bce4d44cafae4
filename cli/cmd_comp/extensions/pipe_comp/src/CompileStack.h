#ifndef QOR_CLI_COMPILE_STACK_H
#define QOR_CLI_COMPILE_STACK_H

#include <string_view>

namespace QorCliPipe {

// To be called before a regular expression is compiled, each time, for the
// stack may be another one. Throws Poco::RegularExpressionException when the
// expression is nested more deeply than the stack that is left can take. Any
// thread.
void checkCompileStack(std::string_view pattern);

}  // namespace QorCliPipe

#endif
