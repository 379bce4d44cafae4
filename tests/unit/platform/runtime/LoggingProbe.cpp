// Makes the calls of the logging facade named by its argument, and prints the
// level.

#include <pthread.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "OperationTrace.h"
#include "QorLoggingWrapper.h"

namespace {

using Qor::LoggingWrapper;
using Qor::Trace::Cli;

void writeRecords(LoggingWrapper& facade) {
  facade.trace_printf(Cli, "src/Probe.cpp", "run", 12, "plain %d%%", 7);
  facade.trace_v2_printf(Cli, 9, "Probe.cpp", "run", 13, " >> %s", "in");
  facade.log_printf(Cli, 4, "/a/b/Probe.cpp", "stop", 4294967295U, "lost %s",
                    "it");
}

int traceOperation() {
  QorCliUtilities::OperationTrace const trace("Probe.cpp", "operation", 1);
  QOR_CLI_TRACE("progress");
  QOR_CLI_LOG_ERROR("error");
  return trace.exitWith(0);
}

// Counts the bytes from the pipe, after blocking the writer for a while.
std::size_t bytesFrom(int pipe) {
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  std::size_t count = 0;
  char buffer[4096];
  ssize_t n = 0;
  while ((n = read(pipe, buffer, sizeof buffer)) > 0) {
    count += static_cast<std::size_t>(n);
  }
  return count;
}

// Interrupts the writing thread by a signal every millisecond.
void interruptOften() {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, nullptr);
  itimerval const everyMillisecond{{0, 1000}, {0, 1000}};
  setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
}

void blockInterruptions(int how) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGALRM);
  pthread_sigmask(how, &signals, nullptr);
}

// Writes a record longer than the capacity of the pipe that is standard error.
void writeInterrupted(LoggingWrapper& facade) {
  int pipe[2];
  if (::pipe(pipe) != 0) std::exit(2);
  dup2(pipe[1], STDERR_FILENO);
  close(pipe[1]);
  blockInterruptions(SIG_BLOCK);
  std::size_t count = 0;
  std::thread reader([&] { count = bytesFrom(pipe[0]); });
  blockInterruptions(SIG_UNBLOCK);
  interruptOften();
  facade.trace_printf(Cli, "Probe.cpp", "run", 1, "%s",
                      std::string(1000000, 'x').c_str());
  close(STDERR_FILENO);
  blockInterruptions(SIG_BLOCK);
  reader.join();
  std::printf("%zu bytes\n", count);
}

}  // namespace

int main(int argc, char** argv) {
  std::string const task = argc > 1 ? argv[1] : "";
  LoggingWrapper& facade = LoggingWrapper::instance();
  std::printf("%u\n", facade.get_level());
  if (task == "records") writeRecords(facade);
  if (task == "lines") {
    facade.trace_printf(Cli, "Probe.cpp", "run", 1, "one\ntwo");
    facade.trace_printf(Cli, "Probe.cpp", "run", 1,
                        "\x01\t\r\x1B[0m\x7F\xC3\xA9");
  }
  if (task == "long") {
    facade.trace_printf(Cli, "Probe.cpp", "run", 1, "%s",
                        std::string(100000, 'x').c_str());
  }
  if (task == "interrupted") writeInterrupted(facade);
  if (task == "operation") return traceOperation();
  return &facade == &LoggingWrapper::instance() ? 0 : 1;
}
