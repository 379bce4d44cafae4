#include "sources/ProcessSource.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "system/EngineErrors.h"

namespace QorCliEngine {

ProcessSource::ProcessSource(std::vector<std::string> words)
    : words_(std::move(words)) {}

void ProcessSource::start() {
  int ends[2];
  FileDescriptor const input(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  if (!input || ::pipe2(ends, O_CLOEXEC) != 0) {
    throw SourceFailure("cannot run \"" + words_.front() +
                        "\": " + std::strerror(errno));
  }
  output_ = FileDescriptor(ends[0]);
  FileDescriptor const writeEnd(ends[1]);
  process_.emplace(words_, input.get(), writeEnd.get(), SIGKILL);
  reader_.emplace(output_.get(), "the output of \"" + words_.front() + '"');
}

Source::State ProcessSource::read(LineChunker& chunker) {
  return reader_->read(chunker);
}

void ProcessSource::wait(int milliseconds) { reader_->wait(milliseconds); }

void ProcessSource::finish() {
  std::string const failure = process_->wait(true);
  if (!failure.empty()) throw SourceFailure(words_.front() + ": " + failure);
}

}  // namespace QorCliEngine
