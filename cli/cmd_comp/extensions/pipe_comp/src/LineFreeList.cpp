#include "SpareLines.h"

namespace QorCliPipe {
namespace {

std::vector<std::string> spareLines;

// Of the strings and of the texts.
std::size_t memoryOf(std::vector<std::string> const& lines) {
  std::size_t bytes = lines.capacity() * sizeof(std::string);
  for (std::string const& line : lines) bytes += line.capacity();
  return bytes;
}

}  // namespace

// The line is complete before it is moved, so that a failure leaves no line
// with another one's text.
void appendLine(std::string_view line, std::vector<std::string>& lines) {
  if (spareLines.empty()) {
    lines.emplace_back(line);
    return;
  }
  spareLines.back().assign(line);
  lines.push_back(std::move(spareLines.back()));
  spareLines.pop_back();
}

void keepAsSpare(std::vector<std::string>& lines) noexcept {
  if (lines.size() > spareLines.size() && memoryOf(lines) <= kMostSpareBytes) {
    spareLines.swap(lines);
  }
  lines.clear();
}

}  // namespace QorCliPipe
