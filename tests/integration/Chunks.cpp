#include "Chunks.h"

namespace qor_test {
namespace {

std::vector<std::string> linesOf(std::string const& text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  while (begin < text.size()) {
    std::size_t const feed = text.find('\n', begin);
    std::size_t const end = feed == std::string::npos ? text.size() : feed + 1;
    lines.push_back(text.substr(begin, end - begin));
    begin = end;
  }
  return lines;
}

}  // namespace

char const* nameOf(Chunking chunking) {
  switch (chunking) {
    case Chunking::kWhole:
      return "Whole";
    case Chunking::kLineByLine:
      return "LineByLine";
    default:
      return "Random";
  }
}

std::ostream& operator<<(std::ostream& out, Chunking chunking) {
  return out << nameOf(chunking);
}

std::vector<std::string> chunksOf(std::string const& text, Chunking chunking,
                                  std::mt19937& random) {
  if (chunking == Chunking::kWhole || text.empty()) return {text};
  std::vector<std::string> const lines = linesOf(text);
  if (chunking == Chunking::kLineByLine) return lines;
  std::bernoulli_distribution newChunk(0.4);
  std::vector<std::string> chunks{""};
  for (std::string const& line : lines) {
    if (newChunk(random)) chunks.emplace_back();
    chunks.back() += line;
  }
  return chunks;
}

}  // namespace qor_test
