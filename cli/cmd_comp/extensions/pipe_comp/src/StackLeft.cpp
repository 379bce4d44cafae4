#include "StackLeft.h"

#include <pthread.h>
#include <sys/auxv.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>

namespace QorCliPipe {
namespace {

// What is taken as the size of a main thread's stack that has no limit.
constexpr std::size_t kUnlimitedStack = std::size_t{8} << 20;  // bytes

// How far `here` is above the lower end of [low, high); 0 outside.
std::size_t distance(std::uintptr_t here, std::uintptr_t low,
                     std::uintptr_t high) {
  return here > low && here < high ? here - low : 0;
}

// The main thread's stack grows as far as its limit allows. Its upper end is
// where the kernel put the program's name. (Asking the threads library instead
// would read the process's memory map from a file, each time.)
std::size_t leftOfMainThread(std::uintptr_t here) {
  auto const top = static_cast<std::uintptr_t>(getauxval(AT_EXECFN));
  rlimit limit{};
  if (top == 0 || getrlimit(RLIMIT_STACK, &limit) != 0) return 0;
  std::size_t size = kUnlimitedStack;
  if (limit.rlim_cur != RLIM_INFINITY) {
    size = static_cast<std::size_t>(std::min<rlim_t>(limit.rlim_cur, top / 2));
  }
  return distance(here, top - std::min<std::uintptr_t>(size, top), top);
}

std::size_t leftOfOtherThread(std::uintptr_t here) {
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
  void* low = nullptr;
  std::size_t size = 0;
  int const status = pthread_attr_getstack(&attributes, &low, &size);
  pthread_attr_destroy(&attributes);
  if (status != 0) return 0;
  auto const begin = reinterpret_cast<std::uintptr_t>(low);
  return distance(here, begin, begin + size);
}

}  // namespace

std::size_t stackLeft() {
  auto const here =
      reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  if (gettid() == getpid()) {
    std::size_t const left = leftOfMainThread(here);
    // The only thread of a child process runs on the stack of the thread that
    // forked it.
    if (left != 0) return left;
  }
  return leftOfOtherThread(here);
}

}  // namespace QorCliPipe
