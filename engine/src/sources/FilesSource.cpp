#include "sources/FilesSource.h"

#include <dirent.h>
#include <glob.h>
#include <sys/stat.h>

#include <memory>
#include <new>
#include <utility>

#include "system/EngineErrors.h"
#include "system/Interrupts.h"

namespace QorCliEngine {
namespace {

// How glob() looks at folders: once the command is to end, they are empty.
::glob_t interruptible() {
  ::glob_t look{};
  look.gl_opendir = [](char const* path) -> void* {
    return Interrupts::requested() ? nullptr : ::opendir(path);
  };
  look.gl_readdir = [](void* folder) {
    return Interrupts::requested() ? nullptr
                                   : ::readdir(static_cast<DIR*>(folder));
  };
  look.gl_closedir = [](void* folder) {
    ::closedir(static_cast<DIR*>(folder));
  };
  look.gl_stat = [](char const* path, struct stat* status) {
    return Interrupts::requested() ? -1 : ::stat(path, status);
  };
  look.gl_lstat = [](char const* path, struct stat* status) {
    return Interrupts::requested() ? -1 : ::lstat(path, status);
  };
  return look;
}

std::vector<std::string> filesMatching(std::string const& pattern) {
  ::glob_t found = interruptible();
  int const status =
      ::glob(pattern.c_str(), GLOB_MARK | GLOB_ALTDIRFUNC, nullptr, &found);
  std::unique_ptr<::glob_t, void (*)(::glob_t*)> const owner(&found, globfree);
  if (Interrupts::requested()) throw Interrupted();
  if (status == GLOB_NOSPACE) throw std::bad_alloc();
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < found.gl_pathc; ++i) {
    std::string path = found.gl_pathv[i];
    bool const folder = path.back() == '/';
    if (!folder) paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace

FilesSource::FilesSource(std::string pattern) : pattern_(std::move(pattern)) {}

void FilesSource::start() {
  paths_ = filesMatching(pattern_);
  if (!openNext()) throw SourceFailure("no file matches \"" + pattern_ + '"');
}

Source::State FilesSource::read(LineChunker& chunker) {
  try {
    State const state = file_ ? file_->read(chunker) : State::kEnd;
    if (state != State::kEnd) return state;
  } catch (SourceFailure const& failure) {
    note(failure.what());
  }
  chunker.endLine();
  return openNext() ? State::kMore : State::kEnd;
}

// Returns false after the last. Without a file afterwards, the next one could
// not be opened.
bool FilesSource::openNext() {
  file_.reset();
  if (next_ == paths_.size()) return false;
  try {
    file_.emplace(paths_[next_++]);
    file_->start();
  } catch (SourceFailure const& failure) {
    file_.reset();
    note(failure.what());
  }
  return true;
}

void FilesSource::note(std::string const& failure) {
  if (failures_++ == 0) firstFailure_ = failure;
}

void FilesSource::wait(int milliseconds) {
  if (file_) file_->wait(milliseconds);
}

void FilesSource::finish() {
  if (failures_ == 0) return;
  std::size_t const others = failures_ - 1;
  throw SourceFailure(
      firstFailure_ +
      (others == 0 ? "" : ", and " + std::to_string(others) + " more"));
}

}  // namespace QorCliEngine
