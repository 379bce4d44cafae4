#ifndef QOR_CLI_ENGINE_DESCRIPTOR_READER_H
#define QOR_CLI_ENGINE_DESCRIPTOR_READER_H

#include <cstddef>
#include <string>

#include "sources/Source.h"

namespace QorCliEngine {

// Reads an open file descriptor as a Source does. Descriptors are not owned.
class DescriptorReader {
 public:
  // `name` stands for the descriptor in messages.
  DescriptorReader(int descriptor, std::string name);

  Source::State read(LineChunker& chunker) const;
  // Also until `other` is readable, unless that is negative.
  void wait(int milliseconds, int other = -1) const;

  // As read, into `size` bytes at `place`; stores in `count` how many came.
  Source::State read(char* place, std::size_t size, std::size_t& count) const;

 private:
  int descriptor_;
  std::string name_;
};

}  // namespace QorCliEngine

#endif
