#ifndef QOR_CLI_ENGINE_BLOCKED_SIGNALS_H
#define QOR_CLI_ENGINE_BLOCKED_SIGNALS_H

#include <poll.h>

#include <csignal>
#include <cstddef>

namespace QorCliEngine {

// Blocks every signal while it lives. What is checked meanwhile stays as it is
// until wait() begins, so that no signal comes in between and is slept through.
// One thread.
class BlockedSignals {
 public:
  BlockedSignals();
  ~BlockedSignals();
  BlockedSignals(BlockedSignals const&) = delete;
  BlockedSignals& operator=(BlockedSignals const&) = delete;

  // The signals that were blocked before.
  sigset_t const& before() const { return before_; }

  // As poll(), letting signals through while it waits: the handlers of those
  // that have come run, and it returns. A negative descriptor is passed over.
  // Negative `milliseconds`: for as long as it takes.
  void wait(pollfd* requests, std::size_t count, int milliseconds) const;

 private:
  sigset_t before_;
};

}  // namespace QorCliEngine

#endif
