#ifndef QOR_CLI_ENGINE_STANDARD_INPUT_H
#define QOR_CLI_ENGINE_STANDARD_INPUT_H

#include <memory>
#include <string>

#include "sources/DescriptorReader.h"
#include "sources/Source.h"

namespace QorCliEngine {

// The engine's standard input, from which command lines come, or the text for a
// pipeline: both are taken from one buffer, so that a pipe command in a script
// gets what follows its line.
class StandardInput {
 public:
  StandardInput();

  // Takes the next line, without its line feed, into `line`. Returns false at
  // the end. Throws SourceFailure when the input cannot be read.
  bool nextLine(std::string& line);

  // A source that yields all that has not been taken. It refers to this object.
  std::unique_ptr<Source> rest();

 private:
  class Rest;

  // Reads on; returns whether anything has come before the end.
  bool more();

  DescriptorReader reader_;
  std::string buffer_;
  std::size_t begin_ = 0;  // of what has not been taken, in buffer_
};

}  // namespace QorCliEngine

#endif
