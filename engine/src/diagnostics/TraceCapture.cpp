#include "diagnostics/TraceCapture.h"

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
constexpr unsigned kNoTraceLevel = 7;
constexpr char kFullTraceLevel[] = "10";

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

TraceCapture::TraceCapture() : file_(::memfd_create("trace", MFD_CLOEXEC)) {
  if (!file_) {
    throw std::runtime_error(std::string("cannot trace: ") +
                             std::strerror(errno));
  }
  TemporaryVariable const level("QOR_LOG_LEVEL", kFullTraceLevel);
  TemporaryVariable const file("QOR_LOG_FILE",
                               "/proc/self/fd/" + std::to_string(file_.get()));
  if (Qor::LoggingWrapper::instance().get_level() <= kNoTraceLevel) {
    throw std::runtime_error(
        "cannot trace: the runtime library does not take its level from "
        "QOR_LOG_LEVEL");
  }
}

// The library appends, so that it begins anew in the emptied file.
std::string TraceCapture::take() {
  off_t const size = ::lseek(file_.get(), 0, SEEK_END);
  std::string records(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
  ssize_t const count = ::pread(file_.get(), records.data(), records.size(), 0);
  records.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  if (::ftruncate(file_.get(), 0) != 0) {
    throw std::runtime_error(std::string("cannot trace: ") +
                             std::strerror(errno));
  }
  return records;
}

}  // namespace QorCliEngine
