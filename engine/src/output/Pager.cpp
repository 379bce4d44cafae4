#include "output/Pager.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "system/EngineErrors.h"
#include "system/ProgramFolders.h"

namespace QorCliEngine {
namespace {

constexpr char kLess[] = "less";
constexpr char kLessCommand[] = "less -FRX";
// What a shell answers when it cannot run or find a command.
constexpr char const* kNotRun[] = {"exit status 126", "exit status 127"};

bool isInPath(char const* program) {
  std::vector<std::string> const folders = programFolders();
  return std::any_of(folders.begin(), folders.end(), [&](auto const& folder) {
    return ::access((folder + '/' + program).c_str(), X_OK) == 0;
  });
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
  process_.emplace(
      std::vector<std::string>{"sh", "-c", command},
      ChildProcess::Streams{readEnd.get(), STDOUT_FILENO, STDERR_FILENO},
      SIGTERM);  // it restores the terminal then
}

std::size_t Pager::capacity() const {
  return static_cast<std::size_t>(::fcntl(input_.get(), F_GETPIPE_SZ));
}

bool Pager::finish() {
  input_.reset();
  try {
    auto const failure = process_->wait(ChildProcess::EndedBy::kLeaving);
    return std::none_of(std::begin(kNotRun), std::end(kNotRun),
                        [&](char const* notRun) { return failure == notRun; });
  } catch (Interrupted const&) {
    return true;  // whoever destroys the object ends it
  }
}

}  // namespace QorCliEngine
