#include "ChildProcess.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "EngineErrors.h"
#include "Interrupts.h"

namespace QorCliEngine {
namespace {

constexpr int kGracePolls = 50;
constexpr useconds_t kGracePollInterval = 10'000;  // microseconds

// The descriptors and signals that a program starts with.
class SpawnSettings {
 public:
  SpawnSettings(int input, int output) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    posix_spawnattr_init(&attributes_);
    sigset_t ignored;
    sigemptyset(&ignored);
    sigaddset(&ignored, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes_, &ignored);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnSettings() {
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&actions_);
  }
  SpawnSettings(SpawnSettings const&) = delete;
  SpawnSettings& operator=(SpawnSettings const&) = delete;

  posix_spawn_file_actions_t const* actions() const { return &actions_; }
  posix_spawnattr_t const* attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

std::string describe(int status) {
  if (WIFSIGNALED(status)) {
    int const signal = WTERMSIG(status);
    return "ended by signal " + std::to_string(signal) + " (" +
           strsignal(signal) + ")";
  }
  int const code = WEXITSTATUS(status);
  return code == 0 ? "" : "exit status " + std::to_string(code);
}

}  // namespace

ChildProcess::ChildProcess(std::vector<std::string> const& words, int input,
                           int output) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string const& word : words) {
    arguments.push_back(const_cast<char*>(word.c_str()));
  }
  arguments.push_back(nullptr);
  SpawnSettings const settings(input, output);
  int const error =
      posix_spawnp(&pid_, arguments.front(), settings.actions(),
                   settings.attributes(), arguments.data(), environ);
  if (error != 0) {
    pid_ = 0;
    throw SourceFailure("cannot run \"" + words.front() +
                        "\": " + std::strerror(error));
  }
}

ChildProcess::~ChildProcess() {
  if (pid_ == 0) return;
  ::kill(pid_, SIGTERM);
  if (endsInTime()) return;
  ::kill(pid_, SIGKILL);
  while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) continue;
}

std::string ChildProcess::wait(bool interruptible) {
  int status = 0;
  while (::waitpid(pid_, &status, 0) < 0) {
    if (errno != EINTR) {
      pid_ = 0;
      return std::string("unknown exit status: ") + std::strerror(errno);
    }
    if (interruptible && Interrupts::requested()) throw Interrupted();
  }
  pid_ = 0;
  return describe(status);
}

bool ChildProcess::endsInTime() {
  for (int i = 0; i < kGracePolls; ++i) {
    int status = 0;
    if (::waitpid(pid_, &status, WNOHANG) != 0) return true;
    ::usleep(kGracePollInterval);
  }
  return false;
}

}  // namespace QorCliEngine
