#include "sources/FileSource.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "system/EngineErrors.h"

namespace QorCliEngine {

FileSource::FileSource(std::string path) : path_(std::move(path)) {}

void FileSource::start() {
  std::string const name = '"' + path_ + '"';
  // Opening a FIFO would wait until somebody writes, and not be interrupted.
  file_ = FileDescriptor(
      ::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file_) {
    throw SourceFailure("cannot open " + name + ": " + std::strerror(errno));
  }
  reader_.emplace(file_.get(), name);
}

Source::State FileSource::read(LineChunker& chunker) {
  return reader_->read(chunker);
}

void FileSource::wait(int milliseconds) { reader_->wait(milliseconds); }

}  // namespace QorCliEngine
