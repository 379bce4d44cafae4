#ifndef QOR_CLI_OWN_STACK_H
#define QOR_CLI_OWN_STACK_H

#include <memory>
#include <type_traits>

namespace QorCliMatching {

// Calls work(argument) on a stack of its own, of 64 MiB (16 MiB with 32-bit
// words), and returns when that does; what it throws is thrown again. So how
// much stack the caller has left does not matter: on a thread, a coroutine or
// an alternate signal stack. Within such a call, `work` is called directly.
//
// The stack is address space reserved at the first call, until the library is
// unloaded; only the pages that are touched take memory. Below it is a guard
// region. Throws std::bad_alloc when the address space cannot be reserved. One
// call at a time.
void callOnOwnStack(void (*work)(void*), void* argument);

template <typename Work>
void onOwnStack(Work&& work) {
  callOnOwnStack(
      [](void* argument) {
        (*static_cast<std::remove_reference_t<Work>*>(argument))();
      },
      std::addressof(work));
}

}  // namespace QorCliMatching

#endif
