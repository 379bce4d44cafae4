#include "FailingAllocator.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "SmallStack.h"

namespace qor_test {
namespace {

// Plain variables, since the allocator is used before any constructor runs.
int countdown = 0;  // allocations until one fails; 0: none fails
bool lasting = false;
bool reached = false;
long outstanding = 0;

bool mustFail() {
  if (countdown == 0 || --countdown != 0) return false;
  if (lasting) countdown = 1;
  reached = true;
  errno = ENOMEM;
  return true;
}

void* counted(void* block) {
  if (block != nullptr) ++outstanding;
  return block;
}

void countFreed(void const* block) {
  if (block != nullptr) --outstanding;
}

}  // namespace

void failAllocation(int number, bool andAllLater) {
  countdown = number;
  lasting = andAllLater;
  reached = false;
}

bool stopFailing() {
  countdown = 0;
  return reached;
}

long outstandingAllocations() { return outstanding; }

}  // namespace qor_test

#define QOR_TEST_REPLACES __attribute__((visibility("default")))

using qor_test::counted;
using qor_test::countFreed;
using qor_test::mustFail;

#if QOR_TEST_ADDRESS_SANITIZER

QOR_TEST_REPLACES void* operator new(std::size_t size) {
  void* const block = mustFail() ? nullptr : counted(std::malloc(size));
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

QOR_TEST_REPLACES void operator delete(void* block) noexcept {
  countFreed(block);
  std::free(block);
}

QOR_TEST_REPLACES void operator delete(void* block, std::size_t) noexcept {
  operator delete(block);
}

#else

extern "C" {

// The C library's allocator under names that cannot be replaced.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

QOR_TEST_REPLACES void* malloc(std::size_t size) noexcept {
  return mustFail() ? nullptr : counted(__libc_malloc(size));
}

QOR_TEST_REPLACES void* calloc(std::size_t count, std::size_t size) noexcept {
  return mustFail() ? nullptr : counted(__libc_calloc(count, size));
}

QOR_TEST_REPLACES void* realloc(void* block, std::size_t size) noexcept {
  if (mustFail()) return nullptr;
  void* const moved = __libc_realloc(block, size);
  if (block == nullptr) return counted(moved);
  if (moved == nullptr && size == 0) countFreed(block);
  return moved;
}

QOR_TEST_REPLACES void* memalign(std::size_t alignment,
                                 std::size_t size) noexcept {
  return mustFail() ? nullptr : counted(__libc_memalign(alignment, size));
}

QOR_TEST_REPLACES void* aligned_alloc(std::size_t alignment,
                                      std::size_t size) noexcept {
  return memalign(alignment, size);
}

QOR_TEST_REPLACES int posix_memalign(void** block, std::size_t alignment,
                                     std::size_t size) noexcept {
  *block = memalign(alignment, size);
  return *block == nullptr ? ENOMEM : 0;
}

QOR_TEST_REPLACES void free(void* block) noexcept {
  countFreed(block);
  __libc_free(block);
}

}  // extern "C"

#endif
