#include "output/OutputWriter.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "output/ControlCharacters.h"
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

}  // namespace

void OutputWriter::writeIfFull() {
  if (buffer_.size() >= kBlockSize) writeTo(STDOUT_FILENO);
}

void OutputWriter::flush() { writeTo(STDOUT_FILENO); }

void OutputWriter::finish() { flush(); }

std::string OutputWriter::shown() const {
  return form_ == Form::kVisible ? ControlCharacters::visible(buffer_)
                                 : buffer_;
}

void OutputWriter::writeTo(int descriptor) {
  ClearAtExit const clear(buffer_);
  if (form_ == Form::kVisible) buffer_ = shown();
  std::size_t done = 0;
  while (done < buffer_.size()) {
    ssize_t const n =
        ::write(descriptor, buffer_.data() + done, buffer_.size() - done);
    if (n >= 0) {
      done += static_cast<std::size_t>(n);
    } else if (errno != EINTR) {
      throwWriteError();
    } else if (Interrupts::requested()) {
      throw Interrupted();
    }
  }
}

}  // namespace QorCliEngine
