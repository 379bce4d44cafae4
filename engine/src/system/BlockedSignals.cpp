#include "system/BlockedSignals.h"

#include <ctime>

namespace QorCliEngine {
namespace {

timespec asTime(int milliseconds) {
  return {milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
}

}  // namespace

BlockedSignals::BlockedSignals() {
  sigset_t all;
  sigfillset(&all);
  sigprocmask(SIG_SETMASK, &all, &before_);
}

BlockedSignals::~BlockedSignals() {
  sigprocmask(SIG_SETMASK, &before_, nullptr);
}

void BlockedSignals::wait(pollfd* requests, std::size_t count,
                          int milliseconds) const {
  timespec const time = asTime(milliseconds);
  ::ppoll(requests, count, milliseconds < 0 ? nullptr : &time, &before_);
}

}  // namespace QorCliEngine
