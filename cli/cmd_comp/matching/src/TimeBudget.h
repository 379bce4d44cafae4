#ifndef QOR_CLI_TIME_BUDGET_H
#define QOR_CLI_TIME_BUDGET_H

#include <ctime>

namespace QorCliMatching {

// Processor time that the calling thread may spend. It runs from the first look
// at the clock on. Used by one thread at a time.
class TimeBudget {
 public:
  explicit TimeBudget(double seconds) : seconds_(seconds) {}

  // Gives all of it back.
  void restart() { isRunning_ = false; }

  // What is left, in seconds: 0 or less when all is spent. Looks at the clock,
  // which takes some 200 nanoseconds.
  double left() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    double const now = static_cast<double>(time.tv_sec) +
                       1e-9 * static_cast<double>(time.tv_nsec);
    if (!isRunning_) end_ = now + seconds_;
    isRunning_ = true;
    return end_ - now;
  }

  bool isSpent() { return left() <= 0; }

 private:
  double seconds_;
  bool isRunning_ = false;
  double end_ = 0;
};

}  // namespace QorCliMatching

#endif
