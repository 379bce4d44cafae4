#ifndef QOR_TEST_CHUNKS_H
#define QOR_TEST_CHUNKS_H

#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace qor_test {

// How an input is divided into calls.
enum class Chunking { kWhole, kLineByLine, kRandom };

char const* nameOf(Chunking chunking);
std::ostream& operator<<(std::ostream& out, Chunking chunking);

// `text` in chunks that end with a line feed; text after the last line feed is
// a separate chunk, or the end of the only chunk of kWhole. An empty text is
// one empty chunk. `random` determines the chunks of kRandom.
std::vector<std::string> chunksOf(std::string const& text, Chunking chunking,
                                  std::mt19937& random);

}  // namespace qor_test

#endif
