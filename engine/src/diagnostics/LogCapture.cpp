#include "diagnostics/LogCapture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>

#include "QorLoggingWrapper.h"

namespace QorCliEngine {
namespace {

// Records are traced by libraries that ask for a level above 7; 10 is the
// highest that they use.
constexpr int kNoTraceLevel = 7;
constexpr char kFullTraceLevel[] = "10";

char const* valueOf(char const* name) {
  char const* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

[[noreturn]] void throwCannotTrace(char const* reason) {
  throw std::runtime_error(std::string("cannot trace: ") + reason);
}

// An environment variable that has another value for a while.
class TemporaryVariable {
 public:
  TemporaryVariable(char const* name, std::string const& value) : name_(name) {
    if (char const* const now = std::getenv(name)) before_ = now;
    ::setenv(name, value.c_str(), 1);
  }
  ~TemporaryVariable() {
    if (before_) {
      ::setenv(name_, before_->c_str(), 1);
    } else {
      ::unsetenv(name_);
    }
  }
  TemporaryVariable(TemporaryVariable const&) = delete;
  TemporaryVariable& operator=(TemporaryVariable const&) = delete;

 private:
  char const* name_;
  std::optional<std::string> before_;
};

}  // namespace

LogCapture::LogCapture(Kind kind) {
  char const* const level = valueOf("QOR_LOG_LEVEL");
  char const* const path = valueOf("QOR_LOG_FILE");
  if (kind == Kind::kTrace) {
    captureInMemory(kFullTraceLevel);
    if (!file_) throwCannotTrace(std::strerror(errno));
    if (Qor::LoggingWrapper::instance().get_level() > unsigned{kNoTraceLevel})
      return;
    throwCannotTrace(
        "the runtime library does not take its level from "
        "QOR_LOG_LEVEL");
  }
  if (*path == '\0' && std::atoi(level) <= kNoTraceLevel) {
    captureInMemory(level);
  }
}

void LogCapture::captureInMemory(char const* level) {
  file_ = FileDescriptor(::memfd_create("log", MFD_CLOEXEC));
  if (!file_) return;
  TemporaryVariable const levelOfLog("QOR_LOG_LEVEL", level);
  TemporaryVariable const file("QOR_LOG_FILE",
                               "/proc/self/fd/" + std::to_string(file_.get()));
  Qor::LoggingWrapper::instance();
}

off_t LogCapture::end() const {
  return file_ ? ::lseek(file_.get(), 0, SEEK_END) : 0;
}

std::size_t LogCapture::size() const {
  return static_cast<std::size_t>(end() - begin_);
}

std::string LogCapture::take() {
  std::string records(size(), '\0');
  ssize_t const count =
      ::pread(file_.get(), records.data(), records.size(), begin_);
  records.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  drop();
  return records;
}

// The library appends, so that it begins anew in a file that is emptied.
void LogCapture::drop() {
  bool const emptied = file_ && ::ftruncate(file_.get(), 0) == 0;
  begin_ = emptied ? 0 : end();
}

}  // namespace QorCliEngine
