#include "system/ChildProcess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iterator>

#include "system/BlockedSignals.h"
#include "system/EngineErrors.h"
#include "system/Interrupts.h"

namespace QorCliEngine {
namespace {

constexpr int kGraceLooks = 50;
constexpr int kLookInterval = 10;  // milliseconds

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

[[noreturn]] void becomeProgram(char* const* arguments,
                                ChildProcess::Streams const& streams,
                                int failure) {
  ::dup2(streams.input, STDIN_FILENO);
  ::dup2(streams.output, STDOUT_FILENO);
  ::dup2(streams.errors, STDERR_FILENO);
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

// The C library of Debian 12 declares its function for C only.
int openProcess(pid_t pid) {
  return static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
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

ChildProcess::ChildProcess(std::vector<std::string> const& words,
                           Streams const& streams, int orphanSignal) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string const& word : words) {
    arguments.push_back(const_cast<char*>(word.c_str()));
  }
  arguments.push_back(nullptr);
  int const error = start(arguments.data(), streams, orphanSignal);
  if (error != 0) {
    throw SourceFailure("cannot run \"" + words.front() +
                        "\": " + std::strerror(error));
  }
}

// Returns 0, or the number of the error.
int ChildProcess::start(char* const* arguments, Streams const& streams,
                        int orphanSignal) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return errno;
  FileDescriptor const readEnd(ends[0]);
  FileDescriptor writeEnd(ends[1]);
  pid_t const engine = ::getpid();
  {
    // None is to reach a child that still has the engine's handlers.
    BlockedSignals const blocked;
    pid_ = ::fork();
    if (pid_ < 0) return errno;
    if (pid_ == 0) {
      endWithParent(engine, orphanSignal);
      resetSignals(blocked.before());
      becomeProgram(arguments, streams, writeEnd.get());
    }
  }
  // Without one, wait() looks again and again.
  ended_ = FileDescriptor(openProcess(pid_));
  writeEnd.reset();
  int const error = errorFrom(readEnd.get());
  if (error != 0) wait(EndedBy::kLeaving);
  return error;
}

ChildProcess::~ChildProcess() {
  if (pid_ <= 0) return;
  ::kill(pid_, SIGTERM);
  if (endsInTime()) return;
  ::kill(pid_, SIGKILL);
  while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) continue;
}

std::optional<std::string> ChildProcess::wait(EndedBy endedBy, int descriptor) {
  for (;;) {
    BlockedSignals const blocked;
    int status = 0;
    pid_t const ended = ::waitpid(pid_, &status, WNOHANG);
    if (ended != 0) pid_ = 0;
    if (ended > 0) return describe(status);
    if (ended < 0) {
      return std::string("unknown exit status: ") + std::strerror(errno);
    }
    bool const givenUp = endedBy == EndedBy::kInterrupt
                             ? Interrupts::requested()
                             : Interrupts::leaving();
    if (givenUp) throw Interrupted();
    pollfd requests[] = {{ended_.get(), POLLIN, 0}, {descriptor, POLLIN, 0}};
    blocked.wait(requests, std::size(requests), ended_ ? -1 : kLookInterval);
    if (requests[1].revents != 0) return std::nullopt;
  }
}

bool ChildProcess::endsInTime() {
  for (int i = 0; i < kGraceLooks; ++i) {
    int status = 0;
    if (::waitpid(pid_, &status, WNOHANG) != 0) return true;
    ::usleep(kLookInterval * 1000);
  }
  return false;
}

}  // namespace QorCliEngine
