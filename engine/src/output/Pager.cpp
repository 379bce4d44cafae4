#include "output/Pager.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

constexpr char kLess[] = "less";
constexpr char kLessCommand[] = "less -FRX";
// What a shell answers when it cannot run or find a command.
constexpr char const* kNotRun[] = {"exit status 126", "exit status 127"};

bool isInPath(char const* program) {
  char const* const path = std::getenv("PATH");
  std::string folders = path == nullptr ? "" : path;
  while (!folders.empty()) {
    std::size_t const end = folders.find(':');
    std::string const file = folders.substr(0, end) + '/' + program;
    if (::access(file.c_str(), X_OK) == 0) return true;
    folders.erase(0, end == std::string::npos ? end : end + 1);
  }
  return false;
}

}  // namespace

std::string Pager::chosen() {
  if (char const* const pager = std::getenv("PAGER")) return pager;
  return isInPath(kLess) ? kLessCommand : "";
}

Pager::Pager(std::string const& command) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) {
    throw SourceFailure("cannot run \"" + command +
                        "\": " + std::strerror(errno));
  }
  FileDescriptor const readEnd(ends[0]);
  input_ = FileDescriptor(ends[1]);
  process_.emplace(std::vector<std::string>{"sh", "-c", command}, readEnd.get(),
                   STDOUT_FILENO, SIGTERM);  // it restores the terminal then
}

std::size_t Pager::capacity() const {
  return static_cast<std::size_t>(::fcntl(input_.get(), F_GETPIPE_SZ));
}

bool Pager::finish() {
  input_.reset();
  std::string const failure = process_->wait(false);
  for (char const* notRun : kNotRun) {
    if (failure == notRun) return false;
  }
  return true;
}

}  // namespace QorCliEngine
