#ifndef QOR_CLI_ENGINE_POINTER_H
#define QOR_CLI_ENGINE_POINTER_H

#include <cstddef>
#include <string>

namespace QorCliEngine {
namespace Pointer {

// `line`, and below it a mark after `before`, the line's beginning, with
// `words` after the mark. Without the line and the mark when the line is too
// wide for them. `width` as in Layout. Control characters are made visible.
std::string behind(std::string const& before, std::string const& line,
                   std::string const& words, std::size_t width);

}  // namespace Pointer
}  // namespace QorCliEngine

#endif
