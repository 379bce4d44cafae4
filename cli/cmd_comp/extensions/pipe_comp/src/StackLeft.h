#ifndef QOR_CLI_STACK_LEFT_H
#define QOR_CLI_STACK_LEFT_H

#include <cstddef>

namespace QorCliPipe {

// Returns how many bytes of stack the calling thread may still use, as seen
// from the caller; 0 when that cannot be found out. Opens no file. Callable
// from any thread.
std::size_t stackLeft();

}  // namespace QorCliPipe

#endif
