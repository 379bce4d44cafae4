#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

#include "QorThreadLock.h"

namespace {

using namespace std::chrono_literals;

TEST(QorThreadLock, BlocksOtherThreadsUntilReleased) {
  Qor::QorThreadLock lock;
  std::atomic<bool> entered{false};
  lock.lock();
  std::thread other([&] {
    std::lock_guard<Qor::QorThreadLock> const guard(lock);
    entered = true;
  });
  std::this_thread::sleep_for(50ms);
  bool const enteredWhileHeld = entered;
  lock.unlock();
  other.join();
  EXPECT_FALSE(enteredWhileHeld);
  EXPECT_TRUE(entered);
}

TEST(QorThreadLock, LocksAreIndependent) {
  Qor::QorThreadLock one;
  Qor::QorThreadLock two;
  std::lock_guard<Qor::QorThreadLock> const first(one);
  std::lock_guard<Qor::QorThreadLock> const second(two);
}

}  // namespace
