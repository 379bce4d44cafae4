#ifndef QOR_CLI_SPARE_LINES_H
#define QOR_CLI_SPARE_LINES_H

#include <string>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// Lines that have been printed, kept for their memory: asking the allocator for
// each kept line takes about as long as finding it.
//
// At most kMostSpareBytes are kept, from one call of the component to the next
// and until the library is unloaded. Not locked: the engine calls the component
// one call at a time.

constexpr std::size_t kMostSpareBytes = std::size_t{1} << 20;

// Appends a copy of `line` to `lines`, in spare memory where there is some.
// When memory runs out, std::bad_alloc is thrown and `lines` is as it was.
void appendLine(std::string_view line, std::vector<std::string>& lines);

// Empties `lines`, whose texts are no longer needed, and keeps their memory,
// unless it is too much or more lines than these are kept already.
void keepAsSpare(std::vector<std::string>& lines) noexcept;

}  // namespace QorCliPipe

#endif
