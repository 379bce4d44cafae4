#ifndef QOR_CLI_ENGINE_SOURCE_H
#define QOR_CLI_ENGINE_SOURCE_H

#include "sources/LineChunker.h"

namespace QorCliEngine {

// Where the text that runs through a pipeline comes from.
//
// Made when the line is understood, started when all stages are ready. Every
// function may throw SourceFailure; destroying a source cancels what it is
// still doing. One thread.
class Source {
 public:
  enum class State {
    kMore,  // there may be more at once
    kIdle,  // nothing has come; there will be more or an end, later
    kEnd,   // all has been read
  };

  static constexpr int kForEver = -1;  // milliseconds to wait

  virtual ~Source() = default;

  virtual void start() {}

  // Adds to `chunker` what there is, about a chunk at most. Does not wait.
  virtual State read(LineChunker& chunker) = 0;

  // Waits until read() has something to say, until a signal comes, or for as
  // long as it is to.
  virtual void wait(int /*milliseconds*/) {}

  // To be called after the end: throws when the text came to its end but the
  // command failed. May wait, and throws Interrupted when that is interrupted.
  virtual void finish() {}
};

}  // namespace QorCliEngine

#endif
