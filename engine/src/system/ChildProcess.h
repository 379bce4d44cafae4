#ifndef QOR_CLI_ENGINE_CHILD_PROCESS_H
#define QOR_CLI_ENGINE_CHILD_PROCESS_H

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "system/FileDescriptor.h"

namespace QorCliEngine {

// A program that the engine has started.
//
// Signals have their ordinary effect on it. When the engine ends without
// destroying the object, the system sends the program a signal. Destroying the
// object before wait() has returned ends the program: it is asked to with
// SIGTERM and, if it does not obey in time, killed. None of this reaches what
// the program has started in turn: it stays in the engine's process group, so
// that it may read passwords from the terminal and Ctrl-C reaches all of it.
class ChildProcess {
 public:
  // The descriptors that become the program's standard ones; the caller keeps
  // them.
  struct Streams {
    int input;
    int output;
    int errors;
  };

  // Starts `words[0]`, looked up in PATH, with the other words as arguments.
  // `orphanSignal` is what it gets when the engine ends. Throws SourceFailure
  // when it cannot be started.
  ChildProcess(std::vector<std::string> const& words, Streams const& streams,
               int orphanSignal);
  ~ChildProcess();
  ChildProcess(ChildProcess const&) = delete;
  ChildProcess& operator=(ChildProcess const&) = delete;

  // What ends a wait before the program has ended: that the operator interrupts
  // the line, or only that the engine is to leave.
  enum class EndedBy { kInterrupt, kLeaving };

  // Waits until the program has ended, or until `descriptor`, unless that is
  // negative, is readable. Returns nothing in the latter case. Otherwise an
  // empty text when it ended with exit status 0, "exit status N", "ended by
  // signal N (name)" or, when that cannot be found out, "unknown exit status: "
  // and why. Throws Interrupted when something else ends the wait.
  std::optional<std::string> wait(EndedBy endedBy, int descriptor = -1);

 private:
  int start(char* const* arguments, Streams const& streams, int orphanSignal);
  bool endsInTime();

  pid_t pid_ = 0;         // 0: ended and collected
  FileDescriptor ended_;  // readable when it has ended; none on old systems
};

}  // namespace QorCliEngine

#endif
