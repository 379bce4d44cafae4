#ifndef QOR_CLI_LINE_FREE_LIST_H
#define QOR_CLI_LINE_FREE_LIST_H

#include <string>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// A free list of printed lines: allocating each kept line takes about as long
// as finding it.
//
// Holds at most kMaxFreeListBytes, between calls of the component and until the
// library is unloaded. Not locked: the engine makes one call at a time.

constexpr std::size_t kMaxFreeListBytes = std::size_t{1} << 20;

// Appends a copy of `line` to `lines`, in memory of the free list if it has
// any. Throws std::bad_alloc and leaves `lines` unchanged if memory runs out.
void appendLine(std::string_view line, std::vector<std::string>& lines);

// Empties `lines`. Moves their memory to the free list, unless that holds as
// many lines already or it would become too large.
void recycleLines(std::vector<std::string>& lines) noexcept;

}  // namespace QorCliPipe

#endif
