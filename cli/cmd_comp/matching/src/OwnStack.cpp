#include "OwnStack.h"

#include <sys/mman.h>
#include <ucontext.h>

#include <cstddef>
#include <exception>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define QOR_CLI_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#define QOR_CLI_ADDRESS_SANITIZER __has_feature(address_sanitizer)
#endif

#if QOR_CLI_ADDRESS_SANITIZER
#include <sanitizer/common_interface_defs.h>
#define QOR_CLI_LEAVE_STACK __sanitizer_start_switch_fiber
#define QOR_CLI_ENTER_STACK __sanitizer_finish_switch_fiber
#else
#define QOR_CLI_LEAVE_STACK(...)
#define QOR_CLI_ENTER_STACK(...)
#endif

#if __has_include(<valgrind/valgrind.h>)
#include <valgrind/valgrind.h>
#else
#define VALGRIND_STACK_REGISTER(low, high) 0U
#define VALGRIND_STACK_DEREGISTER(id) static_cast<void>(id)
#endif

namespace QorCliMatching {
namespace {

constexpr std::size_t kMiB = std::size_t{1} << 20;  // bytes

constexpr std::size_t kStackSize = (sizeof(void*) == 8 ? 64 : 16) * kMiB;

// Larger than any frame, so that none skips it.
constexpr std::size_t kGuardSize = kMiB;

class Reservation {
 public:
  Reservation()
      : memory_(mmap(nullptr, kGuardSize + kStackSize, PROT_NONE,
                     MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {
    if (memory_ == MAP_FAILED) throw std::bad_alloc();
    if (mprotect(bottom(), kStackSize, PROT_READ | PROT_WRITE) != 0) {
      munmap(memory_, kGuardSize + kStackSize);
      throw std::bad_alloc();
    }
    valgrindId_ = VALGRIND_STACK_REGISTER(bottom(), bottom() + kStackSize);
  }
  ~Reservation() {
    VALGRIND_STACK_DEREGISTER(valgrindId_);
    munmap(memory_, kGuardSize + kStackSize);
  }
  Reservation(Reservation const&) = delete;
  Reservation& operator=(Reservation const&) = delete;

  char* bottom() const { return static_cast<char*>(memory_) + kGuardSize; }

 private:
  void* memory_;
  unsigned valgrindId_ = 0;
};

struct Call {
  void (*work)(void*);
  void* argument;
  std::exception_ptr thrown;
};

// The call in progress, or null.
Call* current = nullptr;

// Not on the caller's stack, which may be small: on 64-bit Arm, each takes more
// than 4 KiB.
ucontext_t callersContext;
ucontext_t ownContext;

// Exceptions must not leave this stack: the unwinder cannot cross it.
void run() {
  [[maybe_unused]] void const* callersBottom = nullptr;
  [[maybe_unused]] std::size_t callersSize = 0;
  QOR_CLI_ENTER_STACK(nullptr, &callersBottom, &callersSize);
  try {
    current->work(current->argument);
  } catch (...) {
    current->thrown = std::current_exception();
  }
  QOR_CLI_LEAVE_STACK(nullptr, callersBottom, callersSize);
}

void switchTo(Reservation const& stack, Call& call) {
  [[maybe_unused]] void* callersFakeStack = nullptr;
  if (getcontext(&ownContext) != 0) throw std::bad_alloc();
  ownContext.uc_stack.ss_sp = stack.bottom();
  ownContext.uc_stack.ss_size = kStackSize;
  ownContext.uc_link = &callersContext;
  makecontext(&ownContext, run, 0);
  current = &call;
  QOR_CLI_LEAVE_STACK(&callersFakeStack, stack.bottom(), kStackSize);
  // Returns twice, the second time when the work is done. swapcontext() would
  // do the same, but AddressSanitizer warns about each call.
  bool volatile isDone = false;
  getcontext(&callersContext);
  if (!isDone) {
    isDone = true;
    setcontext(&ownContext);
  }
  QOR_CLI_ENTER_STACK(callersFakeStack, nullptr, nullptr);
  current = nullptr;
}

}  // namespace

void callOnOwnStack(void (*work)(void*), void* argument) {
  if (current != nullptr) return work(argument);
  static Reservation const stack;
  Call call{work, argument, nullptr};
  switchTo(stack, call);
  if (call.thrown) std::rethrow_exception(call.thrown);
}

}  // namespace QorCliMatching
