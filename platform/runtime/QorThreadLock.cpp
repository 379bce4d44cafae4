#include "QorThreadLock.h"

#include <mutex>

namespace Qor {

struct QorThreadLock::State {
  std::mutex mutex;
};

QorThreadLock::QorThreadLock() : state_(std::make_unique<State>()) {}
QorThreadLock::~QorThreadLock() = default;

void QorThreadLock::lock() { state_->mutex.lock(); }
void QorThreadLock::unlock() { state_->mutex.unlock(); }

}  // namespace Qor
