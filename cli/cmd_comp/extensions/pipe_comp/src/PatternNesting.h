#ifndef QOR_CLI_PATTERN_NESTING_H
#define QOR_CLI_PATTERN_NESTING_H

#include <cstddef>
#include <string_view>

namespace QorCliPipe {

// Returns an upper bound of how deeply the groups of a regular expression are
// nested, where a reference to a group stands for the group: 0 for a pattern
// without a parenthesis. Parentheses that are escaped, stand in a character
// class, in a \Q...\E text or in a comment are not groups; where a pattern is
// hard to read, too many are counted rather than too few. Takes time and memory
// proportional to the pattern, and constant stack. Any thread.
std::size_t nestingBound(std::string_view pattern);

}  // namespace QorCliPipe

#endif
