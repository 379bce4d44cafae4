#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "system/ChildProcess.h"

namespace QorCliEngine {
namespace {

std::string endOf(std::string const& program) {
  return *ChildProcess({"sh", "-c", program},
                       {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}, SIGKILL)
              .wait(ChildProcess::EndedBy::kLeaving);
}

TEST(ChildProcessTest, wait) {
  EXPECT_EQ(endOf("exit 0"), "");
  EXPECT_EQ(endOf("exit 3"), "exit status 3");
  EXPECT_EQ(endOf("kill -9 $$"), "ended by signal 9 (Killed)");
}

TEST(ChildProcessTest, aStatusThatIsNotKeptIsAFailure) {
  auto const before = std::signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(endOf("exit 0"), "unknown exit status: No child processes");
  std::signal(SIGCHLD, before);
}

}  // namespace
}  // namespace QorCliEngine
