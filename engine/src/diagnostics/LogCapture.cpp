#include "diagnostics/LogCapture.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
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
  if (*path != '\0') {
    readAgain(path);
  } else if (std::atoi(level) <= kNoTraceLevel) {
    captureInMemory(level);
  }
}

void LogCapture::captureInMemory(char const* level) {
  file_ = FileDescriptor(::memfd_create("log", MFD_CLOEXEC));
  if (!file_) return;
  inMemory_ = true;
  TemporaryVariable const levelOfLog("QOR_LOG_LEVEL", level);
  TemporaryVariable const file("QOR_LOG_FILE",
                               "/proc/self/fd/" + std::to_string(file_.get()));
  Qor::LoggingWrapper::instance();
}

// A FIFO or a device gives nothing back.
void LogCapture::readAgain(char const* path) {
  Qor::LoggingWrapper::instance();  // makes the file
  file_ = FileDescriptor(::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  bool const isFile =
      file_ && ::fstat(file_.get(), &status) == 0 && S_ISREG(status.st_mode);
  if (!isFile) file_.reset();
  drop();
}

off_t LogCapture::end() const {
  return file_ ? ::lseek(file_.get(), 0, SEEK_END) : 0;
}

std::string LogCapture::take() {
  off_t const size = end() - begin_;
  std::string records(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
  ssize_t const count =
      ::pread(file_.get(), records.data(), records.size(), begin_);
  records.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  drop();
  return records;
}

// The library appends, so that it begins anew in a file that is emptied.
void LogCapture::drop() {
  bool const emptied = inMemory_ && ::ftruncate(file_.get(), 0) == 0;
  begin_ = emptied ? 0 : end();
}

}  // namespace QorCliEngine
