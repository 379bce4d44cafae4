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

// True in a build with the address sanitizer, whose redzones make every frame
// several times as large and whose allocator keeps freed memory for a while.
constexpr bool kAddressSanitizer = QOR_TEST_ADDRESS_SANITIZER;

// Whether calls take many times as long as usual and freed memory is kept for a
// while: with the address sanitizer, and where QOR_TEST_SLOW is set in the
// environment, as for a run under valgrind.
bool isSlowRun();

// Calls `work` on a thread of its own that has `size` bytes of stack, and waits
// for its end; what `work` throws is thrown again. Below the stack lies memory
// that cannot be touched, so that using more ends the program. `size` is a
// multiple of the page size; with the address sanitizer the stack is eight
// times as large.
void runOnStackOf(std::size_t size, std::function<void()> const& work);

// The same on this thread, on a coroutine's stack.
void runOnCoroutineOf(std::size_t size, std::function<void()> const& work);

// The same in a signal handler, on an alternate signal stack. What the kernel
// puts on that for the handler comes on top of `size`.
void runInSignalHandlerOn(std::size_t size, std::function<void()> const& work);

}  // namespace qor_test

#endif
