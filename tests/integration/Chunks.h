#ifndef QOR_TEST_CHUNKS_H
#define QOR_TEST_CHUNKS_H

#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace qor_test {

// The ways of delivering one input in several calls.
enum class Chunking { kWhole, kLineByLine, kRandom };

char const* nameOf(Chunking chunking);
std::ostream& operator<<(std::ostream& out, Chunking chunking);

// `text` in pieces that end behind a line feed; text behind the last line feed
// is a piece of its own, or the end of the one piece of kWhole. An empty text
// is one empty piece. `random` decides the pieces of kRandom.
std::vector<std::string> chunksOf(std::string const& text, Chunking chunking,
                                  std::mt19937& random);

}  // namespace qor_test

#endif
