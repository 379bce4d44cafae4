#include "LineFreeList.h"

namespace QorCliPipe {
namespace {

std::vector<std::string> freeList;

std::size_t memoryOf(std::vector<std::string> const& lines) {
  std::size_t bytes = lines.capacity() * sizeof(std::string);
  for (std::string const& line : lines) bytes += line.capacity();
  return bytes;
}

}  // namespace

// Assigned before it is moved, so that `lines` never holds a stale text.
void appendLine(std::string_view line, std::vector<std::string>& lines) {
  if (freeList.empty()) {
    lines.emplace_back(line);
    return;
  }
  freeList.back().assign(line);
  lines.push_back(std::move(freeList.back()));
  freeList.pop_back();
}

void recycleLines(std::vector<std::string>& lines) noexcept {
  if (lines.size() > freeList.size() && memoryOf(lines) <= kMaxFreeListBytes) {
    freeList.swap(lines);
  }
  lines.clear();
}

}  // namespace QorCliPipe
