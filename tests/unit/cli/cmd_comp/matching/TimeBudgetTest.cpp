#include <gtest/gtest.h>

#include "TimeBudget.h"

namespace {

using QorCliMatching::TimeBudget;

constexpr double kLong = 1000;           // seconds
constexpr double kLittle = 0.01;         // seconds
constexpr double kClockAccuracy = 1e-6;  // seconds

void spend(TimeBudget& budget) {
  while (!budget.isSpent()) continue;
}

TEST(TimeBudgetTest, StartsAtTheFirstCheck) {
  TimeBudget used(kLittle);
  TimeBudget fresh(kLong);
  spend(used);
  EXPECT_NEAR(kLong, fresh.left(), kClockAccuracy);
  EXPECT_FALSE(fresh.isSpent());
  TimeBudget another(kLittle);
  spend(another);
  EXPECT_GT(kLong - kLittle, fresh.left());
  EXPECT_LT(kLong / 2, fresh.left());
}

TEST(TimeBudgetTest, IsSpentAtOnceIfItIsZero) {
  EXPECT_TRUE(TimeBudget(0).isSpent());
}

TEST(TimeBudgetTest, StaysSpentUntilRestarted) {
  TimeBudget budget(kLittle);
  spend(budget);
  EXPECT_GE(0, budget.left());
  EXPECT_TRUE(budget.isSpent());
  budget.restart();
  EXPECT_NEAR(kLittle, budget.left(), kClockAccuracy);
}

}  // namespace
