#include <gtest/gtest.h>

#include <stdexcept>

#include "QorSingleton.h"

namespace {

struct Counted : Qor::Singleton<Counted> {
  static inline int made = 0;
  Counted() { ++made; }
};

struct FailsOnce : Qor::Singleton<FailsOnce> {
  static inline int attempts = 0;
  FailsOnce() {
    if (++attempts == 1) throw std::runtime_error("first");
  }
};

TEST(QorSingleton, IsCreatedOnceOnFirstUse) {
  EXPECT_EQ(Counted::made, 0);
  Counted* const first = &Counted::instance();
  EXPECT_EQ(first, &Counted::instance());
  EXPECT_EQ(Counted::made, 1);
}

TEST(QorSingleton, IsRetriedAfterItsConstructorThrows) {
  EXPECT_THROW(FailsOnce::instance(), std::runtime_error);
  EXPECT_NO_THROW(FailsOnce::instance());
  EXPECT_EQ(FailsOnce::attempts, 2);
}

}  // namespace
