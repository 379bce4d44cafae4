#include "output/OutputWriter.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <string_view>

#include "output/ControlCharacters.h"
#include "system/BlockedSignals.h"
#include "system/EngineErrors.h"
#include "system/Interrupts.h"

namespace QorCliEngine {
namespace {

constexpr std::size_t kBlockSize = 256 * 1024;  // bytes

// Empties a text when it goes out of scope, keeping its memory.
class ClearAtExit {
 public:
  explicit ClearAtExit(std::string& text) : text_(text) {}
  ~ClearAtExit() { text_.clear(); }
  ClearAtExit(ClearAtExit const&) = delete;
  ClearAtExit& operator=(ClearAtExit const&) = delete;

 private:
  std::string& text_;
};

[[noreturn]] void throwWriteError() {
  if (errno == EPIPE) throw OutputClosed();
  throw CommandFailure(std::string("cannot write the output: ") +
                       std::strerror(errno));
}

// Returns how many of `size` bytes can be written at once. Where nobody loses
// patience, writing may wait.
std::size_t waitForRoom(int descriptor, std::size_t size) {
  if (!Interrupts::installed()) return size;
  for (;;) {
    BlockedSignals const blocked;
    if (Interrupts::requested()) throw Interrupted();
    pollfd request{descriptor, POLLOUT, 0};
    blocked.wait(&request, 1, -1);
    // What a pipe says that it can take.
    if (request.revents != 0) return std::min<std::size_t>(size, PIPE_BUF);
  }
}

}  // namespace

void OutputWriter::writeIfFull() {
  if (buffer_.size() >= kBlockSize) writeTo(STDOUT_FILENO);
}

void OutputWriter::flush() { writeTo(STDOUT_FILENO); }

void OutputWriter::finish() { flush(); }

void OutputWriter::drop() {
  buffer_.clear();
  finish();
}

std::string OutputWriter::shown() const {
  return form_ == Form::kVisible ? ControlCharacters::visible(buffer_)
                                 : buffer_;
}

void OutputWriter::writeTo(int descriptor) {
  ClearAtExit const clear(buffer_);
  if (form_ == Form::kVisible) buffer_ = shown();
  std::string_view rest = buffer_;
  while (!rest.empty()) {
    std::size_t const size = waitForRoom(descriptor, rest.size());
    ssize_t const n = ::write(descriptor, rest.data(), size);
    if (n < 0 && errno != EINTR) throwWriteError();
    if (n > 0) rest.remove_prefix(static_cast<std::size_t>(n));
  }
}

}  // namespace QorCliEngine
