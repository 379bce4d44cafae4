#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "completion/Completer.h"
#include "output/OutputWriter.h"
#include "sources/DescriptorReader.h"
#include "system/ChildProcess.h"
#include "system/EngineErrors.h"
#include "system/Interrupts.h"
#include "terminal/LineEditor.h"

// A signal that comes just before a system call begins to wait: these take the
// place of the C library's functions, and raise it then.

namespace {

int signalToCome = 0;  // 0: none
int callsBefore = 0;   // that it does not come at

void comeNow() {
  if (signalToCome != 0 && callsBefore-- > 0) return;
  int const signal = signalToCome;
  signalToCome = 0;
  if (signal != 0) std::raise(signal);
}

}  // namespace

extern "C" {

ssize_t read(int descriptor, void* place, std::size_t size) {
  comeNow();
  return ::syscall(SYS_read, descriptor, place, size);
}

ssize_t write(int descriptor, void const* place, std::size_t size) {
  comeNow();
  return ::syscall(SYS_write, descriptor, place, size);
}

int ppoll(pollfd* requests, nfds_t count, timespec const* time,
          sigset_t const* mask) {
  comeNow();
  timespec left = time == nullptr ? timespec{} : *time;
  return static_cast<int>(::syscall(SYS_ppoll, requests, count,
                                    time == nullptr ? nullptr : &left, mask,
                                    _NSIG / 8));
}

pid_t waitpid(pid_t process, int* status, int options) {
  comeNow();
  return static_cast<pid_t>(
      ::syscall(SYS_wait4, process, status, options, nullptr));
}

}  // extern "C"

namespace QorCliEngine {
namespace {

constexpr unsigned kPatience = 10;  // seconds until what hangs is ended

class SignalTimingTest : public testing::Test {
 protected:
  SignalTimingTest() {
    Interrupts::install();
    ::alarm(kPatience);
  }
  ~SignalTimingTest() override {
    ::alarm(0);
    Interrupts::take();
    callsBefore = 0;
  }

  // A pipe that nobody writes to or reads from.
  struct Pipe {
    Pipe() { EXPECT_EQ(::pipe(ends.data()), 0); }
    ~Pipe() {
      ::close(ends[0]);
      ::close(ends[1]);
    }
    std::array<int, 2> ends{};
  };
};

TEST_F(SignalTimingTest, endsTheWaitForAProgram) {
  ChildProcess program({"sleep", "1000"}, {0, 1, 2}, SIGKILL);
  callsBefore = 1;  // whether it has ended
  signalToCome = SIGINT;
  EXPECT_THROW(program.wait(ChildProcess::EndedBy::kInterrupt), Interrupted);
}

TEST_F(SignalTimingTest, endsTheWaitForText) {
  Pipe const pipe;
  DescriptorReader const reader(pipe.ends[0], "the pipe");
  signalToCome = SIGINT;
  reader.wait(Source::kForEver);
  EXPECT_TRUE(Interrupts::requested());
}

class PipeWriter : public OutputWriter {
 public:
  using OutputWriter::writeTo;
};

// Leaves room for `room` bytes, a number of pages.
void fillUpTo(int room, int pipe) {
  std::string const page(PIPE_BUF, 'x');
  for (int left = ::fcntl(pipe, F_GETPIPE_SZ); left > room; left -= PIPE_BUF) {
    EXPECT_EQ(::write(pipe, page.data(), page.size()), PIPE_BUF);
  }
}

TEST_F(SignalTimingTest, endsTheWaitForRoom) {
  Pipe const pipe;
  fillUpTo(0, pipe.ends[1]);
  PipeWriter writer;
  writer.buffer() = "text";
  signalToCome = SIGINT;
  EXPECT_THROW(writer.writeTo(pipe.ends[1]), Interrupted);
}

// The signal comes when there is room, but not for all.
TEST_F(SignalTimingTest, endsTheWaitForMoreRoom) {
  Pipe const pipe;
  fillUpTo(PIPE_BUF, pipe.ends[1]);
  PipeWriter writer;
  writer.buffer().assign(2 * PIPE_BUF, 'x');
  callsBefore = 1;
  signalToCome = SIGINT;
  EXPECT_THROW(writer.writeTo(pipe.ends[1]), Interrupted);
}

class EditingTest : public SignalTimingTest {
 protected:
  EditingTest() : master_(::posix_openpt(O_RDWR | O_NOCTTY)) {
    EXPECT_EQ(::grantpt(master_), 0);
    EXPECT_EQ(::unlockpt(master_), 0);
    int const terminal = ::open(::ptsname(master_), O_RDWR | O_NOCTTY);
    ::dup2(terminal, STDIN_FILENO);
    screen_ = ::fdopen(terminal, "r+");
    ::setenv("TERM", "xterm", 1);
    ::setenv("XDG_STATE_HOME", "/dev/null", 1);
  }
  ~EditingTest() override {
    std::fclose(screen_);
    ::close(master_);
  }

  int master_;
  std::FILE* screen_;
  Session session_{0, "", ""};
  SourceCommands commands_{session_, {}};
  Completer completer_{session_, commands_};
  History history_;
};

// The last test: from then on, the engine is to leave.
TEST_F(EditingTest, endsTheWaitForAKey) {
  LineEditor editor(session_, completer_, history_, screen_);
  signalToCome = SIGTERM;
  std::string line;
  EXPECT_FALSE(editor.read(line));
  EXPECT_TRUE(Interrupts::leaving());
}

}  // namespace
}  // namespace QorCliEngine
