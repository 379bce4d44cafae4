#include "sources/DescriptorReader.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iterator>
#include <utility>

#include "system/BlockedSignals.h"
#include "system/EngineErrors.h"
#include "system/Interrupts.h"

namespace QorCliEngine {
namespace {

constexpr int kDoNotWait = 0;  // milliseconds

// Errors count as readable: reading tells.
bool isReadable(int descriptor) {
  pollfd request{descriptor, POLLIN, 0};
  return ::poll(&request, 1, kDoNotWait) != 0;
}

}  // namespace

DescriptorReader::DescriptorReader(int descriptor, std::string name)
    : descriptor_(descriptor), name_(std::move(name)) {}

Source::State DescriptorReader::read(LineChunker& chunker) const {
  Source::State state = Source::State::kIdle;
  chunker.fill([&](char* place, std::size_t size) {
    std::size_t count = 0;
    state = read(place, size, count);
    return count;
  });
  return state;
}

Source::State DescriptorReader::read(char* place, std::size_t size,
                                     std::size_t& count) const {
  count = 0;
  if (!isReadable(descriptor_)) return Source::State::kIdle;
  ssize_t const n = ::read(descriptor_, place, size);
  if (n == 0) return Source::State::kEnd;
  if (n > 0) {
    count = static_cast<std::size_t>(n);
    return Source::State::kMore;
  }
  if (errno == EINTR || errno == EAGAIN) return Source::State::kIdle;
  throw SourceFailure("cannot read " + name_ + ": " + std::strerror(errno));
}

void DescriptorReader::wait(int milliseconds, int other) const {
  BlockedSignals const blocked;
  if (Interrupts::requested()) return;
  pollfd requests[] = {{descriptor_, POLLIN, 0}, {other, POLLIN, 0}};
  blocked.wait(requests, std::size(requests), milliseconds);
}

}  // namespace QorCliEngine
