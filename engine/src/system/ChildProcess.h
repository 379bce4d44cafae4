#ifndef QOR_CLI_ENGINE_CHILD_PROCESS_H
#define QOR_CLI_ENGINE_CHILD_PROCESS_H

#include <sys/types.h>

#include <string>
#include <vector>

namespace QorCliEngine {

// A program that the engine has started.
//
// Signals have their ordinary effect on it. When the engine ends without
// destroying the object, the system sends the program a signal. Destroying the
// object before wait() has returned ends the program: it is asked to with
// SIGTERM and, if it does not obey in time, killed. None of this reaches what
// the program has started in turn.
class ChildProcess {
 public:
  // Starts `words[0]`, looked up in PATH, with the other words as arguments.
  // Its standard input and output are `input` and `output`, which the caller
  // keeps; standard error is the engine's. `orphanSignal` is what it gets when
  // the engine ends. Throws SourceFailure when it cannot be started.
  ChildProcess(std::vector<std::string> const& words, int input, int output,
               int orphanSignal);
  ~ChildProcess();
  ChildProcess(ChildProcess const&) = delete;
  ChildProcess& operator=(ChildProcess const&) = delete;

  // Waits until the program has ended. Returns an empty text when it ended with
  // exit status 0, otherwise "exit status N", "ended by signal N (name)" or,
  // when that cannot be found out, "unknown exit status: " and why.
  // Throws Interrupted when the operator interrupts the wait and
  // `interruptible` is set.
  std::string wait(bool interruptible);

 private:
  int start(char* const* arguments, int input, int output, int orphanSignal);
  bool endsInTime();

  pid_t pid_ = 0;  // 0: ended and collected
};

}  // namespace QorCliEngine

#endif
