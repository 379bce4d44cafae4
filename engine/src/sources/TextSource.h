#ifndef QOR_CLI_ENGINE_TEXT_SOURCE_H
#define QOR_CLI_ENGINE_TEXT_SOURCE_H

#include <string>
#include <utility>

#include "sources/Source.h"

namespace QorCliEngine {

// A text that is there already.
class TextSource : public Source {
 public:
  explicit TextSource(std::string text) : text_(std::move(text)) {}

  State read(LineChunker& chunker) override {
    chunker.append(text_);
    return State::kEnd;
  }

 private:
  std::string text_;
};

}  // namespace QorCliEngine

#endif
