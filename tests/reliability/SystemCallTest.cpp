#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdio.h>

#include <memory>
#include <ostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace qor_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

// The system calls that a call of the plug-in may make: for memory, the time,
// its processor, and the signal mask, which switching stacks preserves.
std::set<std::string> const kAllowed = {
    "brk", "mmap", "munmap", "mremap", "madvise", "mprotect", "gettid",
    "getpid", "futex", "getrlimit", "prlimit64", "clock_gettime",
    "rt_sigprocmask", "sched_getaffinity",
    // Newer C libraries give mapped memory a name.
    "prctl(PR_SET_VMA",
    // The 32-bit variants.
    "mmap2", "ugetrlimit", "clock_gettime64", "sigprocmask"};

constexpr char kMarker[] = "getppid";

// Runs a shell command and returns its output.
std::string printedBy(std::string const& command, int& status) {
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"),
                                             pclose);
  if (!pipe) throw std::runtime_error("no shell");
  std::string text;
  char buffer[4096];
  while (fgets(buffer, sizeof buffer, pipe.get()) != nullptr) text += buffer;
  status = pclose(pipe.release());
  return text;
}

// The tracer may be missing or not permitted.
bool canTrace() {
  int status = 0;
  printedBy("strace -f -o /dev/null true 2>&1", status);
  return status == 0;
}

std::string quoted(std::string const& text) {
  std::string result = "'";
  for (char const c : text) result += c == '\'' ? "'\\''" : std::string(1, c);
  return result + '\'';
}

// One system call of a trace, as in "4711 brk(NULL) = 0x1000".
struct SystemCall {
  std::string thread;
  std::string name;  // empty for a signal or an exit
};

SystemCall parsed(std::string const& line) {
  std::istringstream in(line);
  SystemCall call;
  std::string rest;
  in >> call.thread;
  std::getline(in >> std::ws, rest);
  std::size_t const end = rest.find('(');
  if (end != std::string::npos && rest.rfind("---", 0) != 0) {
    call.name = rest.substr(0, end);
    // The first argument is the operation.
    if (call.name == "prctl") call.name = rest.substr(0, rest.find(','));
  }
  return call;
}

// The system calls between the markers on their thread.
std::vector<std::string> betweenMarkers(std::string const& trace) {
  std::istringstream in(trace);
  std::vector<std::string> names;
  std::string thread;
  int markers = 0;
  for (std::string line; std::getline(in, line);) {
    SystemCall const call = parsed(line);
    if (call.name == kMarker) {
      ++markers;
      thread = call.thread;
    } else if (markers == 1 && call.thread == thread && !call.name.empty()) {
      names.push_back(call.name);
    }
  }
  EXPECT_EQ(2, markers) << trace;
  return names;
}

struct ProbeCase {
  char const* name;
  char const* what;
  std::string line;
  std::string input;
  int status;
};

std::ostream& operator<<(std::ostream& out, ProbeCase const& probeCase) {
  return out << probeCase.name;
}

class SystemCalls : public testing::TestWithParam<ProbeCase> {
 protected:
  void SetUp() override {
    ASSERT_TRUE(canTrace()) << "strace is missing or may not trace";
  }

  static std::vector<std::string> forbiddenCalls(std::string const& thread) {
    int status = 0;
    std::string const text = printedBy(command(thread), status);
    EXPECT_EQ(0, status) << text;
    EXPECT_THAT(
        text, HasSubstr("status " + std::to_string(GetParam().status) + '\n'));
    std::vector<std::string> forbidden;
    for (std::string const& name : betweenMarkers(text)) {
      if (kAllowed.count(name) == 0) forbidden.push_back(name);
    }
    return forbidden;
  }

 private:
  // The trace goes to the probe's output. The log is off, since the framework
  // would write it.
  static std::string command(std::string const& thread) {
    ProbeCase const& probe = GetParam();
    return "QOR_LOG_LEVEL=0 strace -f -o /dev/stdout " +
           quoted(QOR_SYSTEM_CALL_PROBE) + ' ' + thread + ' ' + probe.what +
           ' ' + quoted(probe.line) + ' ' + quoted(probe.input);
  }
};

TEST_P(SystemCalls, OnTheMainThreadAreForMemoryOnly) {
  EXPECT_THAT(forbiddenCalls("main"), IsEmpty());
}

TEST_P(SystemCalls, OnAnotherThreadAreForMemoryOnly) {
  EXPECT_THAT(forbiddenCalls("thread"), IsEmpty());
}

std::string lines(std::string const& line, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += line + '\n';
  return result;
}

INSTANTIATE_TEST_SUITE_P(
    Probes, SystemCalls,
    testing::Values(
        ProbeCase{"a pattern", "execute", "filter a", "a\nb\n", 0},
        ProbeCase{"context", "execute", "filter -a 3 -b 3 \"x|y\"",
                  lines("x", 200) + lines("z", 200), 0},
        ProbeCase{"much output", "execute", "filter -v y",
                  lines(std::string(60, 'x'), 1500), 0},
        ProbeCase{"a malformed pattern", "execute", "filter (", "a\n", -1},
        ProbeCase{"a wrong option", "execute", "filter -a x a", "a\n", -1},
        ProbeCase{"another command", "execute", "show", "a\n", 0},
        ProbeCase{"a line that is no line", "execute", "a\"b\"", "a\n", -1},
        ProbeCase{"a catastrophic pattern", "execute", "filter \"(a+)+$\"",
                  std::string(60, 'a') + "!\n", 0},
        ProbeCase{"a pattern under the clock", "execute",
                  "filter \"(?=(a+)+$)a\"", std::string(18, 'a') + "!\n", 0},
        ProbeCase{"a pattern in UTF-8", "execute", "filter \"(*UTF8)(a|b)+c\"",
                  std::string(200, 'a') + "\nabc\n", 0},
        ProbeCase{
            "a deep pattern", "execute",
            "filter " + std::string(100, '(') + 'a' + std::string(100, ')'),
            "a\n", 0},
        ProbeCase{"completion", "complete", "filter -", "", 0},
        ProbeCase{"help", "help", "fil", "", 0},
        ProbeCase{"the end of the input", "end", "", "", 0}));

// ---- Parsing a trace

TEST(Trace, IsParsedBetweenTheMarkersOfOneThread) {
  EXPECT_EQ((std::vector<std::string>{"brk", "open"}),
            betweenMarkers("1 write(1, \"x\", 1) = 1\n"
                           "2 getppid() = 5\n"
                           "2 brk(NULL) = 0x1\n"
                           "1 futex(0x1 <unfinished ...>\n"
                           "2 --- SIGCHLD {si_signo=SIGCHLD} ---\n"
                           "2 open(\"f\") = 3\n"
                           "2 getppid() = 5\n"
                           "2 write(1, \"x\", 1) = 1\n"));
}

}  // namespace
}  // namespace qor_test
