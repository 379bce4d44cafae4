#include "system/ChildProcess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "system/EngineErrors.h"
#include "system/FileDescriptor.h"
#include "system/Interrupts.h"

namespace QorCliEngine {
namespace {

constexpr int kGracePolls = 50;
constexpr useconds_t kGracePollInterval = 10'000;  // microseconds

// Blocks every signal while it lives: none is to reach a child that still has
// the engine's handlers.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, &before_);
  }
  ~BlockedSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  BlockedSignals(BlockedSignals const&) = delete;
  BlockedSignals& operator=(BlockedSignals const&) = delete;

  sigset_t const& before() const { return before_; }

 private:
  sigset_t before_;
};

// What follows is called between fork and exec, where only functions that a
// signal handler may call are allowed.

void resetSignals(sigset_t mask) {
  for (int signal = 1; signal < NSIG; ++signal) {
    struct sigaction action {};
    if (sigaction(signal, nullptr, &action) != 0) continue;
    bool const ignored = action.sa_handler == SIG_IGN && signal != SIGPIPE;
    if (!ignored) std::signal(signal, SIG_DFL);
  }
  sigdelset(&mask, SIGPIPE);
  sigprocmask(SIG_SETMASK, &mask, nullptr);
}

[[noreturn]] void becomeProgram(char* const* arguments, int input, int output,
                                int failure) {
  ::dup2(input, STDIN_FILENO);
  ::dup2(output, STDOUT_FILENO);
  ::execvp(arguments[0], arguments);
  int const error = errno;
  ssize_t const written = ::write(failure, &error, sizeof error);
  ::_exit(written < 0 ? 126 : 127);
}

// However the engine ends, by a crash of a plug-in, too, its child does not go
// on alone.
void endWithParent(pid_t parent, int signal) {
  ::prctl(PR_SET_PDEATHSIG, signal);
  if (::getppid() != parent) ::_exit(127);
}

// Of the program that is started with the other end: 0 when it has begun.
int errorFrom(int descriptor) {
  int error = 0;
  while (::read(descriptor, &error, sizeof error) < 0 && errno == EINTR) {
  }
  return error;
}

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
                           int output, int orphanSignal) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string const& word : words) {
    arguments.push_back(const_cast<char*>(word.c_str()));
  }
  arguments.push_back(nullptr);
  int const error = start(arguments.data(), input, output, orphanSignal);
  if (error != 0) {
    throw SourceFailure("cannot run \"" + words.front() +
                        "\": " + std::strerror(error));
  }
}

// Returns 0, or the number of the error.
int ChildProcess::start(char* const* arguments, int input, int output,
                        int orphanSignal) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return errno;
  FileDescriptor const readEnd(ends[0]);
  FileDescriptor writeEnd(ends[1]);
  pid_t const engine = ::getpid();
  {
    BlockedSignals const blocked;
    pid_ = ::fork();
    if (pid_ < 0) return errno;
    if (pid_ == 0) {
      endWithParent(engine, orphanSignal);
      resetSignals(blocked.before());
      becomeProgram(arguments, input, output, writeEnd.get());
    }
  }
  writeEnd.reset();
  int const error = errorFrom(readEnd.get());
  if (error != 0) wait(false);
  return error;
}

ChildProcess::~ChildProcess() {
  if (pid_ <= 0) return;
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
