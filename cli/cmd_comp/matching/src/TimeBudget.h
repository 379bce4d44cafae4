#ifndef QOR_CLI_TIME_BUDGET_H
#define QOR_CLI_TIME_BUDGET_H

#include <ctime>

namespace QorCliMatching {

// Processor time that the calling thread may spend, counted from the first call
// of left(). Used by one thread at a time.
class TimeBudget {
 public:
  explicit TimeBudget(double seconds) : seconds_(seconds) {}

  // Restores the whole budget.
  void restart() { isRunning_ = false; }

  // The remaining seconds, 0 or less if none remain. Reads the clock, which
  // takes about 200 nanoseconds.
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
