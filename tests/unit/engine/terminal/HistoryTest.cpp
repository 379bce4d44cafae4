#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/auxv.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "terminal/EditLibrary.h"
#include "terminal/History.h"

namespace {

bool noLocks = false;
int callsAsAnotherUser = 0;  // of geteuid(), from the next one on

}  // namespace

// In place of the C library's.
extern "C" uid_t geteuid() noexcept {
  auto const user = static_cast<uid_t>(::getauxval(AT_EUID));
  if (callsAsAnotherUser == 0) return user;
  --callsAsAnotherUser;
  return user + 1;
}
extern "C" int flock(int descriptor, int operation) {
  if (!noLocks) {
    return static_cast<int>(::syscall(SYS_flock, descriptor, operation));
  }
  errno = ENOLCK;
  return -1;
}

namespace QorCliEngine {
namespace {

namespace fs = std::filesystem;

// The lines of a history, the oldest first.
std::vector<std::string> linesOf(History const& history) {
  auto const& edit = EditLibrary::get();
  std::vector<std::string> lines;
  HistEvent event;
  for (int found = edit.history(history.handle(), &event, H_LAST); found >= 0;
       found = edit.history(history.handle(), &event, H_PREV)) {
    lines.emplace_back(event.str);
  }
  return lines;
}

using Lines = std::vector<std::string>;

// What a session that begins now would find.
Lines kept() { return linesOf(History()); }

class HistoryTest : public testing::Test {
 protected:
  HistoryTest() {
    char name[] = "/tmp/history-XXXXXX";
    state_ = ::mkdtemp(name);
    ::setenv("XDG_STATE_HOME", state_.c_str(), 1);
  }
  ~HistoryTest() override { fs::remove_all(state_); }

  fs::path folder() const { return state_ / "qorcli"; }
  fs::path file() const { return folder() / "history"; }

  void makeFile(std::string const& text) const {
    fs::create_directories(folder());
    std::ofstream(file()) << text;
  }

  static unsigned permissions(fs::path const& path) {
    return static_cast<unsigned>(fs::status(path).permissions());
  }

 private:
  fs::path state_;
};

TEST_F(HistoryTest, aLineIsKeptWhenItIsEntered) {
  History history;
  history.add("echo \"two words\" | filter \\w\303\244");
  EXPECT_EQ(kept(), Lines({"echo \"two words\" | filter \\w\303\244"}));
}

TEST_F(HistoryTest, aLineTypedTwiceInARowIsKeptOnce) {
  History history;
  for (char const* line : {"a", "a", "b", "a"}) history.add(line);
  EXPECT_EQ(linesOf(history), Lines({"a", "b", "a"}));
  EXPECT_EQ(kept(), Lines({"a", "b", "a"}));
}

TEST_F(HistoryTest, twoSessionsAtOnceLoseNothing) {
  History one;
  History two;
  one.add("first of one");
  two.add("first of two");
  one.add("second of one");
  EXPECT_EQ(linesOf(one), Lines({"first of one", "second of one"}));
  EXPECT_EQ(kept(), Lines({"first of one", "first of two", "second of one"}));
}

// Ten sessions at once, each with fifty lines of more than `size` bytes.
void runSessions(std::size_t size) {
  constexpr int kSessions = 10;
  constexpr int kLines = 50;
  auto const lineOf = [size](int session, int line) {
    return std::to_string(session) + ' ' + std::to_string(line) + ' ' +
           std::string(size, static_cast<char>('a' + session));
  };
  std::vector<pid_t> sessions;
  for (int session = 0; session < kSessions; ++session) {
    sessions.push_back(::fork());
    if (sessions.back() != 0) continue;
    History history;
    for (int i = 0; i < kLines; ++i) history.add(lineOf(session, i));
    ::_exit(0);
  }
  for (pid_t session : sessions) ::waitpid(session, nullptr, 0);
  Lines const lines = kept();
  std::set<std::string> const found(lines.begin(), lines.end());
  std::set<std::string> expected;
  for (int session = 0; session < kSessions; ++session) {
    for (int i = 0; i < kLines; ++i) expected.insert(lineOf(session, i));
  }
  EXPECT_EQ(lines.size(), expected.size());
  EXPECT_TRUE(found == expected);
}

TEST_F(HistoryTest, tenSessionsAtOnceLoseNothingAndBreakNoLine) {
  runSessions(10);
  fs::remove(file());
  // Longer than what a stream writes at once.
  runSessions(5000);
}

TEST_F(HistoryTest, aLockThatAnotherKeepsIsNotWaitedForLong) {
  makeFile("_HiStOrY_V2_\nkept\n");
  int const other = ::open(folder().c_str(), O_RDONLY | O_DIRECTORY);
  ASSERT_EQ(::flock(other, LOCK_EX), 0);
  ::alarm(10);
  History history;
  history.add("mine");
  ::alarm(0);
  ::close(other);
  EXPECT_EQ(linesOf(history), Lines({"kept", "mine"}));
  EXPECT_EQ(kept(), Lines({"kept", "mine"}));
}

TEST_F(HistoryTest, whereThereAreNoLocksLinesAreKept) {
  noLocks = true;
  History history;
  history.add("mine");
  EXPECT_EQ(kept(), Lines({"mine"}));
  noLocks = false;
}

TEST_F(HistoryTest, withoutTheLockAFileIsNotReplaced) {
  std::string text = "_HiStOrY_V2_\n";
  for (int i = 0; i <= 2 * History::kMostLines; ++i) text += "line\n";
  makeFile(text);
  noLocks = true;
  History();
  noLocks = false;
  EXPECT_EQ(fs::file_size(file()), text.size());
}

// Longer than what a stream writes at once, in sessions that do not wait for
// each other.
TEST_F(HistoryTest, withoutTheLockNoLineIsBroken) {
  makeFile("_HiStOrY_V2_\n");
  noLocks = true;
  runSessions(5000);
  noLocks = false;
}

TEST_F(HistoryTest, aFileThatHasGrownIsCutDownToTheNewestLines) {
  constexpr int kMost = History::kMostLines;
  std::string text = "_HiStOrY_V2_\n";
  for (int i = 1; i <= 2 * kMost; ++i) text += std::to_string(i) + '\n';
  makeFile(text);
  EXPECT_EQ(kept().front(), std::to_string(kMost + 1));
  EXPECT_EQ(fs::file_size(file()), text.size());
  History().add("one more");
  EXPECT_EQ(kept().front(), std::to_string(kMost + 2));
  EXPECT_LT(fs::file_size(file()), text.size());
  EXPECT_EQ(permissions(file()), 0600U);
  Lines const lines = kept();
  EXPECT_EQ(lines.size(), std::size_t{kMost});
  EXPECT_EQ(lines.back(), "one more");
}

TEST_F(HistoryTest, aLineThatWasCutOffDoesNotTakeTheNextWithIt) {
  makeFile("_HiStOrY_V2_\nwhole\ncut");
  History().add("next");
  EXPECT_EQ(kept(), Lines({"whole", "cut", "next"}));
}

TEST_F(HistoryTest, folderAndFileAreTheUsersOnly) {
  makeFile("_HiStOrY_V2_\nkept\n");
  fs::permissions(folder(), fs::perms(0755));
  fs::permissions(file(), fs::perms(0666));
  EXPECT_EQ(kept(), Lines({"kept"}));
  EXPECT_EQ(permissions(folder()), 0700U);
  EXPECT_EQ(permissions(file()), 0600U);
}

TEST_F(HistoryTest, aNewFileIsTheUsersOnly) {
  mode_t const before = ::umask(0);
  History().add("a");
  ::umask(before);
  EXPECT_EQ(permissions(folder()), 0700U);
  EXPECT_EQ(permissions(file()), 0600U);
}

TEST_F(HistoryTest, aSymbolicLinkIsNotFollowed) {
  makeFile("");
  fs::path const target = folder() / "target";
  std::ofstream(target) << "_HiStOrY_V2_\nof another\n";
  auto const size = fs::file_size(target);
  fs::remove(file());
  fs::create_symlink(target, file());
  History history;
  history.add("mine");
  EXPECT_EQ(linesOf(history), Lines({"mine"}));
  EXPECT_EQ(fs::file_size(target), size);
  EXPECT_TRUE(fs::is_symlink(file()));
}

TEST_F(HistoryTest, aFolderBehindASymbolicLinkIsLeftAlone) {
  fs::path const target = folder().parent_path() / "target";
  fs::create_directories(target);
  fs::permissions(target, fs::perms{0755});
  fs::remove_all(folder());
  fs::create_directory_symlink(target, folder());
  History history;
  history.add("mine");
  EXPECT_EQ(linesOf(history), Lines({"mine"}));
  EXPECT_TRUE(fs::is_empty(target));
  EXPECT_EQ(fs::status(target).permissions(), fs::perms{0755});
}

// Opening it would wait for ever.
TEST_F(HistoryTest, aFifoIsNotWaitedFor) {
  fs::create_directories(folder());
  ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
  History history;
  history.add("mine");
  EXPECT_EQ(linesOf(history), Lines({"mine"}));
  EXPECT_TRUE(fs::is_fifo(file()));
}

TEST_F(HistoryTest, aFileOfAnotherKindIsLeftAlone) {
  makeFile("not a history\n");
  History().add("mine");
  EXPECT_EQ(fs::file_size(file()), std::string("not a history\n").size());
}

// The owner of the folder is looked at first, and then that of the file.
TEST_F(HistoryTest, anotherUsersFolderIsLeftAlone) {
  makeFile("_HiStOrY_V2_\nof another\n");
  fs::permissions(folder(), fs::perms{0755});
  callsAsAnotherUser = 1;
  History().add("mine");
  EXPECT_EQ(callsAsAnotherUser, 0);
  EXPECT_EQ(fs::status(folder()).permissions(), fs::perms{0755});
  EXPECT_EQ(kept(), Lines({"of another"}));
}

TEST_F(HistoryTest, anotherUsersFileIsLeftAlone) {
  makeFile("_HiStOrY_V2_\nof another\n");
  History history;
  callsAsAnotherUser = 1;
  history.add("mine");
  EXPECT_EQ(callsAsAnotherUser, 0);
  EXPECT_EQ(kept(), Lines({"of another"}));
}

TEST_F(HistoryTest, withoutAFolderLinesAreKeptInMemory) {
  ::setenv("XDG_STATE_HOME", "/dev/null", 1);
  History history;
  history.add("mine");
  EXPECT_EQ(linesOf(history), Lines({"mine"}));
}

}  // namespace
}  // namespace QorCliEngine
