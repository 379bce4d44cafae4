#include <gtest/gtest.h>
#include <ucontext.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "OwnStack.h"
#include "SmallStack.h"

namespace {

using QorCliMatching::onOwnStack;

constexpr std::size_t kKiB = 1024;         // bytes
constexpr std::size_t kMiB = 1024 * kKiB;  // bytes
constexpr std::size_t kSmallStack = 16 * kKiB;

// AddressSanitizer makes frames several times larger.
constexpr std::size_t kAlternateStack =
    (qor_test::kAddressSanitizer ? 16 : 1) * 32 * kKiB;

[[gnu::noinline]] std::uintptr_t stackAddress() {
  return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}

std::uintptr_t distance(std::uintptr_t a, std::uintptr_t b) {
  return a < b ? b - a : a - b;
}

// Touches `bytes` of the stack, page by page.
[[gnu::noinline]] std::size_t useStack(std::size_t bytes) {
  char volatile page[4 * kKiB];
  page[0] = 1;
  if (bytes < sizeof page) return 1;
  return useStack(bytes - sizeof page) + static_cast<std::size_t>(page[0]);
}

// Whether `onOwnStack` offers room for a deep recursion.
bool recursesDeeply(std::size_t bytes = 4 * kMiB) {
  std::size_t pages = 0;
  onOwnStack([&] { pages = useStack(bytes); });
  return pages > bytes / (4 * kKiB);
}

TEST(OwnStack, DiffersFromTheCallers) {
  std::uintptr_t address = 0;
  onOwnStack([&] { address = stackAddress(); });
  EXPECT_GT(distance(address, stackAddress()), kMiB);
}

TEST(OwnStack, IsTheSameInEachCall) {
  std::vector<std::uintptr_t> addresses;
  for (int i = 0; i < 3; ++i) {
    onOwnStack([&] { addresses.push_back(stackAddress()); });
  }
  EXPECT_EQ(addresses[0], addresses[1]);
  EXPECT_EQ(addresses[0], addresses[2]);
}

TEST(OwnStack, RunsANestedCallDirectly) {
  std::vector<int> order;
  std::uintptr_t outer = 0;
  std::uintptr_t inner = 0;
  onOwnStack([&] {
    outer = stackAddress();
    order.push_back(1);
    onOwnStack([&] {
      inner = stackAddress();
      order.push_back(2);
    });
    order.push_back(3);
  });
  EXPECT_EQ((std::vector<int>{1, 2, 3}), order);
  EXPECT_LT(inner, outer);
  EXPECT_LT(outer - inner, 64 * kKiB);
}

// ---- Exceptions

struct Own {
  int value;
};

TEST(OwnStack, CarriesExceptionsOfAnyType) {
  try {
    onOwnStack([] { throw std::runtime_error("a reason"); });
    FAIL();
  } catch (std::runtime_error const& error) {
    EXPECT_STREQ("a reason", error.what());
  }
  try {
    onOwnStack([] { throw Own{7}; });
    FAIL();
  } catch (Own const& own) {
    EXPECT_EQ(7, own.value);
  }
  EXPECT_THROW(onOwnStack([] { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_THROW(onOwnStack([] { throw 3; }), int);
}

TEST(OwnStack, WorksAfterAnException) {
  for (int i = 0; i < 3; ++i) {
    std::uintptr_t address = 0;
    EXPECT_THROW(onOwnStack([&] { throw Own{i}; }), Own);
    onOwnStack([&] { address = stackAddress(); });
    EXPECT_GT(distance(address, stackAddress()), kMiB);
  }
}

TEST(OwnStack, UnwindsItsFrames) {
  int destroyed = 0;
  struct Counter {
    int& count;
    ~Counter() { ++count; }
  };
  EXPECT_THROW(onOwnStack([&] {
                 Counter const first{destroyed};
                 Counter const second{destroyed};
                 throw Own{1};
               }),
               Own);
  EXPECT_EQ(2, destroyed);
}

TEST(OwnStack, CarriesExceptionsOutOfNestedCalls) {
  int caught = 0;
  EXPECT_THROW(onOwnStack([&] {
                 try {
                   onOwnStack([] { throw Own{1}; });
                 } catch (Own const&) {
                   ++caught;
                 }
                 onOwnStack([] { throw std::runtime_error("second"); });
               }),
               std::runtime_error);
  EXPECT_EQ(1, caught);
}

// The caller may be inside a catch clause.
TEST(OwnStack, KeepsTheExceptionBeingHandled) {
  try {
    throw Own{1};
  } catch (Own const& own) {
    EXPECT_THROW(onOwnStack([] { throw std::runtime_error("other"); }),
                 std::runtime_error);
    onOwnStack([] {});
    EXPECT_EQ(1, own.value);
  }
}

// ---- Callers with little stack

TEST(OwnStack, AllowsDeepRecursion) { EXPECT_TRUE(recursesDeeply()); }

// Of 64 MiB, or 16; less, for frames take more than they use.
TEST(OwnStack, IsAsLargeAsPromised) {
  EXPECT_TRUE(recursesDeeply((sizeof(void*) == 8 ? 40 : 10) * kMiB));
}

TEST(OwnStack, AllowsDeepRecursionOnASmallThreadStack) {
  bool enough = false;
  qor_test::runOnStackOf(kSmallStack, [&] { enough = recursesDeeply(); });
  EXPECT_TRUE(enough);
}

TEST(OwnStack, CarriesExceptionsToASmallThreadStack) {
  EXPECT_THROW(qor_test::runOnStackOf(kSmallStack,
                                      [] { onOwnStack([] { throw Own{1}; }); }),
               Own);
}

// One call at a time, each from a different thread.
TEST(OwnStack, ServesSeveralThreads) {
  int served = 0;
  for (int i = 0; i < 3; ++i) {
    std::thread([&] { onOwnStack([&] { ++served; }); }).join();
  }
  EXPECT_EQ(3, served);
}

ucontext_t test;
ucontext_t coroutine;
bool enoughInCoroutine = false;
int yielded = 0;

void runCoroutine() {
  enoughInCoroutine = recursesDeeply();
  ++yielded;
  swapcontext(&coroutine, &test);
  try {
    onOwnStack([] { throw Own{1}; });
  } catch (Own const&) {
    ++yielded;
  }
}

TEST(OwnStack, TakesLittleOfTheCallersStack) {
  bool enough = false;
  qor_test::runOnCoroutineOf(8 * kKiB, [&] { enough = recursesDeeply(); });
  EXPECT_TRUE(enough);
}

TEST(OwnStack, AllowsDeepRecursionInACoroutine) {
  std::vector<char> stack(kAlternateStack);
  ASSERT_EQ(0, getcontext(&coroutine));
  coroutine.uc_stack.ss_sp = stack.data();
  coroutine.uc_stack.ss_size = stack.size();
  coroutine.uc_link = &test;
  makecontext(&coroutine, runCoroutine, 0);
  ASSERT_EQ(0, swapcontext(&test, &coroutine));
  EXPECT_TRUE(enoughInCoroutine);
  EXPECT_EQ(1, yielded);
  // The stack is free while the coroutine is suspended.
  EXPECT_TRUE(recursesDeeply());
  ASSERT_EQ(0, swapcontext(&test, &coroutine));
  EXPECT_EQ(2, yielded);
}

bool enoughInHandler = false;
bool onAlternateStack = false;

void handle(int) {
  stack_t current{};
  sigaltstack(nullptr, &current);
  onAlternateStack = (current.ss_flags & SS_ONSTACK) != 0;
  enoughInHandler = recursesDeeply();
}

TEST(OwnStack, AllowsDeepRecursionOnAnAlternateSignalStack) {
  std::vector<char> memory(kAlternateStack);
  stack_t alternate{};
  stack_t before{};
  alternate.ss_sp = memory.data();
  alternate.ss_size = memory.size();
  ASSERT_EQ(0, sigaltstack(&alternate, &before));
  struct sigaction action {};
  struct sigaction actionBefore {};
  action.sa_handler = handle;
  action.sa_flags = SA_ONSTACK;
  ASSERT_EQ(0, sigaction(SIGUSR1, &action, &actionBefore));
  raise(SIGUSR1);
  sigaction(SIGUSR1, &actionBefore, nullptr);
  sigaltstack(&before, nullptr);
  EXPECT_TRUE(onAlternateStack);
  EXPECT_TRUE(enoughInHandler);
}

}  // namespace
