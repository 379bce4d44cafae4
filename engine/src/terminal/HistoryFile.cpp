#include "terminal/HistoryFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>
#include <system_error>
#include <vector>

#include "terminal/EditLibrary.h"

namespace QorCliEngine {
namespace {

namespace fs = std::filesystem;

constexpr char kName[] = "history";
constexpr char kNewName[] = "history.new";
constexpr int kCareful = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
constexpr int kLockTries = 40;
constexpr useconds_t kLockInterval = 5'000;   // microseconds
constexpr std::size_t kLongestCharacter = 4;  // bytes in the file, encoded
constexpr std::size_t kHeadingSize = 64;      // bytes, and more
constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

EditLibrary const& edit() { return EditLibrary::get(); }

// The user's state directory, or an empty path.
fs::path stateDirectory() {
  char const* const state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && *state == '/') return state;
  char const* const home = std::getenv("HOME");
  if (home == nullptr || *home != '/') return {};
  return fs::path(home) / ".local" / "state";
}

bool isOwn(struct stat const& status) { return status.st_uid == ::geteuid(); }

FileDescriptor openFolder() {
  fs::path const state = stateDirectory();
  if (state.empty()) return {};
  fs::path const path = state / "qorcli";
  std::error_code error;
  fs::create_directories(path, error);
  FileDescriptor folder(
      ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  bool const usable = folder && ::fstat(folder.get(), &status) == 0 &&
                      isOwn(status) && ::fchmod(folder.get(), S_IRWXU) == 0;
  return usable ? std::move(folder) : FileDescriptor();
}

// Holds the lock while it lives, if it could be had: a session must not hang
// because another one does, or the file system knows no locks. The folder and
// not the file is locked: the file is replaced while others wait.
class Lock {
 public:
  explicit Lock(int folder) : folder_(folder) {
    for (int i = 0; i < kLockTries && !(held_ = tryLock()); ++i) {
      if (errno != EWOULDBLOCK && errno != EINTR) break;
      ::usleep(kLockInterval);
    }
  }
  ~Lock() {
    if (held_) ::flock(folder_, LOCK_UN);
  }
  Lock(Lock const&) = delete;
  Lock& operator=(Lock const&) = delete;

  explicit operator bool() const { return held_; }

 private:
  bool tryLock() const { return ::flock(folder_, LOCK_EX | LOCK_NB) == 0; }

  int folder_;
  bool held_ = false;
};

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Takes the descriptor.
File asFile(FileDescriptor descriptor, char const* mode) {
  File file(::fdopen(descriptor.get(), mode));
  if (file) descriptor.release();
  return file;
}

// A history that holds one line: the library encodes lines only in whole
// histories.
class SingleLine {
 public:
  explicit SingleLine(std::string const& line)
      : history_(edit().history_init()) {
    if (history_ == nullptr) throw std::bad_alloc();
    HistEvent event;
    edit().history(history_, &event, H_SETSIZE, 1);
    edit().history(history_, &event, H_ENTER, line.c_str());
  }
  ~SingleLine() { edit().history_end(history_); }
  SingleLine(SingleLine const&) = delete;
  SingleLine& operator=(SingleLine const&) = delete;

  ::History* get() const { return history_; }

 private:
  ::History* history_;
};

bool save(::History* history, std::FILE* file) {
  HistEvent event;
  return edit().history(history, &event, H_SAVE_FP, file) >= 0 &&
         std::fflush(file) == 0;
}

// Whether the last line lacks its line feed, as when the disk was full.
bool endsInsideLine(int descriptor, off_t size) {
  char last = '\n';
  return size > 0 && ::pread(descriptor, &last, 1, size - 1) == 1 &&
         last != '\n';
}

off_t sizeOf(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 ? status.st_size : 0;
}

// Returns the number of lines read; negative when the file is no history. The
// library reads only files that have a name.
int read(::History* history, int descriptor) {
  HistEvent event;
  std::string const name = "/proc/self/fd/" + std::to_string(descriptor);
  return edit().history(history, &event, H_LOAD, name.c_str());
}

}  // namespace

HistoryFile::HistoryFile() : folder_(openFolder()) {}

// Opens the file, or makes it; none when it is not to be touched.
FileDescriptor HistoryFile::open() const {
  FileDescriptor file(::openat(folder_.get(), kName,
                               O_RDWR | O_APPEND | O_CREAT | kCareful,
                               kOwnerOnly));
  struct stat status {};
  bool const usable = file && ::fstat(file.get(), &status) == 0 &&
                      S_ISREG(status.st_mode) && isOwn(status) &&
                      ::fchmod(file.get(), kOwnerOnly) == 0;
  return usable ? std::move(file) : FileDescriptor();
}

void HistoryFile::load(::History* history, int mostLines) {
  if (!folder_) return;
  Lock const lock(folder_.get());
  FileDescriptor const file = open();
  if (!file) return folder_.reset();
  if (sizeOf(file.get()) == 0) return;
  int const lines = read(history, file.get());
  if (lines < 0) return folder_.reset();
  // What others add meanwhile would be lost.
  if (lock && lines > 2 * mostLines) replace(history);
}

bool HistoryFile::replace(::History* history) const {
  ::unlinkat(folder_.get(), kNewName, 0);
  File const file =
      asFile(FileDescriptor(::openat(folder_.get(), kNewName,
                                     O_WRONLY | O_CREAT | O_EXCL | kCareful,
                                     kOwnerOnly)),
             "w");
  return file && save(history, file.get()) &&
         ::renameat(folder_.get(), kNewName, folder_.get(), kName) == 0;
}

void HistoryFile::append(std::string const& line) {
  if (!folder_) return;
  Lock const lock(folder_.get());
  // Written at once, so that not even without the lock a line is broken.
  std::vector<char> block(kLongestCharacter * line.size() + kHeadingSize);
  File const file = asFile(open(), "a");
  if (!file) return;
  std::setvbuf(file.get(), block.data(), _IOFBF, block.size());
  off_t const size = sizeOf(::fileno(file.get()));
  // Without the lock, it may be a line that another is just writing.
  bool const cutOff = lock && endsInsideLine(::fileno(file.get()), size);
  if (cutOff) std::fputc('\n', file.get());
  // Where the library is at the beginning of a file, it writes a heading.
  std::fseek(file.get(), 0, SEEK_END);
  save(SingleLine(line).get(), file.get());
}

}  // namespace QorCliEngine
