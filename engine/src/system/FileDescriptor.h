#ifndef QOR_CLI_ENGINE_FILE_DESCRIPTOR_H
#define QOR_CLI_ENGINE_FILE_DESCRIPTOR_H

#include <unistd.h>

#include <utility>

namespace QorCliEngine {

// Owns an open file descriptor, or none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  // A negative number stands for none.
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, kNone)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~FileDescriptor() { reset(); }

  explicit operator bool() const { return descriptor_ >= 0; }
  int get() const { return descriptor_; }

  // Gives the descriptor up without closing it.
  int release() { return std::exchange(descriptor_, kNone); }

  void reset() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = kNone;
  }

 private:
  static constexpr int kNone = -1;

  int descriptor_ = kNone;
};

}  // namespace QorCliEngine

#endif
