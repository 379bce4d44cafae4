#include "sources/StandardInput.h"

#include <unistd.h>

#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

constexpr std::size_t kBlockSize = 64 * 1024;  // bytes

}  // namespace

class StandardInput::Rest : public Source {
 public:
  explicit Rest(StandardInput& input) : input_(input) {}

  State read(LineChunker& chunker) override {
    chunker.append(std::string_view(input_.buffer_).substr(input_.begin_));
    input_.buffer_.clear();
    input_.begin_ = 0;
    return input_.reader_.read(chunker);
  }

  void wait(int milliseconds) override { input_.reader_.wait(milliseconds); }

 private:
  StandardInput& input_;
};

StandardInput::StandardInput() : reader_(STDIN_FILENO, "standard input") {}

bool StandardInput::nextLine(std::string& line) {
  std::size_t searched = 0;  // after begin_
  std::size_t end = std::string::npos;
  while ((end = buffer_.find('\n', begin_ + searched)) == std::string::npos) {
    searched = buffer_.size() - begin_;
    if (more()) continue;
    line = buffer_.substr(begin_);
    begin_ = buffer_.size();
    return !line.empty();
  }
  line = buffer_.substr(begin_, end - begin_);
  begin_ = end + 1;
  return true;
}

std::unique_ptr<Source> StandardInput::rest() {
  return std::make_unique<Rest>(*this);
}

bool StandardInput::more() {
  buffer_.erase(0, begin_);
  begin_ = 0;
  std::string block(kBlockSize, '\0');
  std::size_t count = 0;
  Source::State state = Source::State::kIdle;
  while ((state = reader_.read(block.data(), block.size(), count)) ==
         Source::State::kIdle) {
    reader_.wait(Source::kForEver);
  }
  buffer_.append(block, 0, count);
  return state != Source::State::kEnd;
}

}  // namespace QorCliEngine
