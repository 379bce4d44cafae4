#ifndef QOR_THREAD_LOCK_H
#define QOR_THREAD_LOCK_H

#include <memory>

namespace Qor {

// The framework's mutex.
//
// Not recursive: a thread that locks it twice deadlocks. Meets the requirements
// of std::lock_guard.
class __attribute__((visibility("default"))) QorThreadLock {
 public:
  QorThreadLock();
  // The lock must not be held.
  ~QorThreadLock();
  QorThreadLock(QorThreadLock const&) = delete;
  QorThreadLock& operator=(QorThreadLock const&) = delete;

  // Blocks until the lock is free, then acquires it.
  void lock();
  // Releases the lock. The calling thread must hold it.
  void unlock();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace Qor

#endif
