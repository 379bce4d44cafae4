#ifndef QOR_CLI_ENGINE_TERMINAL_H
#define QOR_CLI_ENGINE_TERMINAL_H

#include <cstddef>

namespace QorCliEngine {

// The terminal that the engine is used at.
namespace Terminal {

// In character cells.
struct Size {
  std::size_t rows;
  std::size_t columns;
};

// The size of the terminal on standard output, or of a usual one when that
// does not say. Never smaller than 2 by 20.
Size size();

}  // namespace Terminal
}  // namespace QorCliEngine

#endif
