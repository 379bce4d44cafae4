#include "sources/ProcessSource.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "output/Messages.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

constexpr std::size_t kBlockSize = 64 * 1024;  // bytes

bool makePipe(FileDescriptor& readEnd, FileDescriptor& writeEnd) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return false;
  readEnd = FileDescriptor(ends[0]);
  writeEnd = FileDescriptor(ends[1]);
  return true;
}

}  // namespace

ProcessSource::ProcessSource(std::vector<std::string> words)
    : words_(std::move(words)) {}

void ProcessSource::start() {
  bool const atTerminal = ::isatty(STDERR_FILENO) != 0;
  FileDescriptor const input(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  FileDescriptor outputEnd;
  FileDescriptor errorsEnd;
  if (!input || !makePipe(output_, outputEnd) ||
      (atTerminal && !makePipe(errors_, errorsEnd))) {
    throw SourceFailure("cannot run \"" + words_.front() +
                        "\": " + std::strerror(errno));
  }
  process_.emplace(
      words_,
      ChildProcess::Streams{input.get(), outputEnd.get(),
                            errorsEnd ? errorsEnd.get() : STDERR_FILENO},
      SIGKILL);
  reader_.emplace(output_.get(), "the output of \"" + words_.front() + '"');
}

Source::State ProcessSource::read(LineChunker& chunker) {
  showErrors();
  return reader_->read(chunker);
}

void ProcessSource::wait(int milliseconds) {
  reader_->wait(milliseconds, errors_.get());
}

// A program that goes on to write there would wait for ever.
void ProcessSource::finish() {
  using EndedBy = ChildProcess::EndedBy;
  std::optional<std::string> failure;
  while (!(failure = process_->wait(EndedBy::kInterrupt, errors_.get()))) {
    showErrors();
  }
  showErrors();
  if (!failure->empty()) throw SourceFailure(words_.front() + ": " + *failure);
}

// Shows what has come, a pipe full at most.
void ProcessSource::showErrors() {
  pollfd request{errors_.get(), POLLIN, 0};
  if (::poll(&request, 1, 0) <= 0) return;
  std::string text(kBlockSize, '\0');
  ssize_t const count = ::read(errors_.get(), text.data(), text.size());
  if (count <= 0) return errors_.reset();
  text.resize(static_cast<std::size_t>(count));
  Messages::print(text);
}

}  // namespace QorCliEngine
