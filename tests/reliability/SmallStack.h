#ifndef QOR_TEST_SMALL_STACK_H
#define QOR_TEST_SMALL_STACK_H

#include <cstddef>
#include <functional>

#if defined(__SANITIZE_ADDRESS__)
#define QOR_TEST_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#define QOR_TEST_ADDRESS_SANITIZER __has_feature(address_sanitizer)
#else
#define QOR_TEST_ADDRESS_SANITIZER 0
#endif

namespace qor_test {

// True in a build with AddressSanitizer, whose redzones make every frame
// several times larger and whose allocator retains freed memory for a while.
constexpr bool kAddressSanitizer = QOR_TEST_ADDRESS_SANITIZER;

// Whether calls are many times slower and freed memory is retained for a while:
// with AddressSanitizer, or if QOR_TEST_SLOW is set in the environment, as
// under valgrind.
bool isSlowRun();

// Calls `work` on a new thread with `size` bytes of stack, waits for it, and
// rethrows what it throws. A guard region below the stack ends the program on
// overflow. `size` is a multiple of the page size; with AddressSanitizer, the
// stack is eight times larger, and it is at least PTHREAD_STACK_MIN bytes.
void runOnStackOf(std::size_t size, std::function<void()> const& work);

// The same on this thread, on a coroutine's stack.
void runOnCoroutineOf(std::size_t size, std::function<void()> const& work);

// The same in a signal handler, on an alternate signal stack. The signal frame
// comes on top of `size`.
void runInSignalHandlerOn(std::size_t size, std::function<void()> const& work);

}  // namespace qor_test

#endif
