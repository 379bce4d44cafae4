#include "SmallStack.h"

#include <pthread.h>
#include <sys/mman.h>

#include <cstdlib>
#include <exception>
#include <stdexcept>

namespace qor_test {
namespace {

// More than the largest frame, so that no frame steps over it.
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

}  // namespace

bool isSlowRun() {
  return kAddressSanitizer || std::getenv("QOR_TEST_SLOW") != nullptr;
}

void runOnStackOf(std::size_t size, std::function<void()> const& function) {
  Stack const stack(size * kStackScale);
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

}  // namespace qor_test
