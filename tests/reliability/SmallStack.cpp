#include "SmallStack.h"

#include <pthread.h>
#include <signal.h>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <ucontext.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <stdexcept>

namespace qor_test {
namespace {

// Larger than any frame, so that none skips it.
constexpr std::size_t kForbidden = std::size_t{1} << 20;  // bytes
constexpr std::size_t kStackScale = kAddressSanitizer ? 8 : 1;

void require(bool holds, char const* what) {
  if (!holds) throw std::runtime_error(what);
}

class Stack {
 public:
  explicit Stack(std::size_t size)
      : size_(size),
        memory_(mmap(nullptr, kForbidden + size, PROT_NONE,
                     MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
    require(memory_ != MAP_FAILED, "no memory for a stack");
    require(mprotect(begin(), size_, PROT_READ | PROT_WRITE) == 0,
            "a stack cannot be made writable");
  }
  ~Stack() { munmap(memory_, kForbidden + size_); }
  Stack(Stack const&) = delete;
  Stack& operator=(Stack const&) = delete;

  void* begin() const { return static_cast<char*>(memory_) + kForbidden; }
  std::size_t size() const { return size_; }

 private:
  std::size_t size_;
  void* memory_;
};

struct Work {
  std::function<void()> const& function;
  std::exception_ptr thrown;
};

extern "C" void* runWork(void* argument) {
  auto* const work = static_cast<Work*>(argument);
  try {
    work->function();
  } catch (...) {
    work->thrown = std::current_exception();
  }
  return nullptr;
}

// The work of a coroutine or a signal handler, which take no argument.
Work* current = nullptr;

extern "C" void runCurrentWork() { runWork(current); }

extern "C" void handleSignal(int) { runWork(current); }

// The stack space of a signal frame, which holds the processor's registers.
// Processors with many report it in the auxiliary vector.
std::size_t signalFrameSize() {
#if defined(AT_MINSIGSTKSZ)
  std::size_t const size = getauxval(AT_MINSIGSTKSZ);
#else
  std::size_t const size = 0;
#endif
  constexpr std::size_t page = 4096;  // bytes
  std::size_t const least = static_cast<std::size_t>(MINSIGSTKSZ);
  return (std::max(size, least) + page - 1) / page * page;
}

}  // namespace

bool isSlowRun() {
  return kAddressSanitizer || std::getenv("QOR_TEST_SLOW") != nullptr;
}

void runOnStackOf(std::size_t size, std::function<void()> const& function) {
  // Some processors' threads need more: 128 KiB on 64-bit Arm.
  auto const least = static_cast<std::size_t>(PTHREAD_STACK_MIN);
  Stack const stack(std::max(size * kStackScale, least));
  Work work{function, nullptr};
  pthread_attr_t attributes;
  require(pthread_attr_init(&attributes) == 0, "no thread attributes");
  pthread_t thread{};
  bool const started =
      pthread_attr_setstack(&attributes, stack.begin(), stack.size()) == 0 &&
      pthread_create(&thread, &attributes, runWork, &work) == 0;
  pthread_attr_destroy(&attributes);
  require(started && pthread_join(thread, nullptr) == 0, "no thread");
  if (work.thrown) std::rethrow_exception(work.thrown);
}

void runOnCoroutineOf(std::size_t size, std::function<void()> const& function) {
  Stack const stack(size * kStackScale);
  Work work{function, nullptr};
  ucontext_t caller;
  ucontext_t coroutine;
  require(getcontext(&coroutine) == 0, "no context");
  coroutine.uc_stack.ss_sp = stack.begin();
  coroutine.uc_stack.ss_size = stack.size();
  coroutine.uc_link = &caller;
  makecontext(&coroutine, runCurrentWork, 0);
  current = &work;
  require(swapcontext(&caller, &coroutine) == 0, "no coroutine");
  if (work.thrown) std::rethrow_exception(work.thrown);
}

void runInSignalHandlerOn(std::size_t size,
                          std::function<void()> const& function) {
  Stack const stack(size * kStackScale + signalFrameSize());
  Work work{function, nullptr};
  stack_t alternate{};
  alternate.ss_sp = stack.begin();
  alternate.ss_size = stack.size();
  stack_t previousStack{};
  struct sigaction action {};
  action.sa_handler = handleSignal;
  action.sa_flags = SA_ONSTACK;
  struct sigaction previousAction {};
  require(sigaltstack(&alternate, &previousStack) == 0 &&
              sigaction(SIGUSR1, &action, &previousAction) == 0,
          "no alternate signal stack");
  current = &work;
  raise(SIGUSR1);
  require(sigaction(SIGUSR1, &previousAction, nullptr) == 0 &&
              sigaltstack(&previousStack, nullptr) == 0,
          "an alternate signal stack that cannot be left");
  if (work.thrown) std::rethrow_exception(work.thrown);
}

}  // namespace qor_test
