#ifndef QOR_CLI_OWN_STACK_H
#define QOR_CLI_OWN_STACK_H

#include <memory>
#include <type_traits>

namespace QorCliMatching {

// Calls work(argument) on a separate stack of 64 MiB (16 MiB on 32-bit
// systems), waits for it, and rethrows what it throws. The caller's stack may
// be small: a thread's, a coroutine's or an alternate signal stack. Nested
// calls run `work` directly.
//
// The first call reserves the stack's address space, which is released when the
// library is unloaded; only touched pages take memory. A guard region lies
// below it. Throws std::bad_alloc when the address space cannot be reserved.
// One call at a time.
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
