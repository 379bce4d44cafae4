#ifndef QOR_CLI_GROUP_CALLS_H
#define QOR_CLI_GROUP_CALLS_H

#include <cstddef>
#include <string_view>

namespace QorCliPipe {

// Returns an upper bound of the characters that are read when the calls of
// groups in a regular expression are followed: the expression is read, at each
// call in it the group that is called, at each call in that the next, and so
// on, but never a group from within itself; and all that again for each group
// around a call. The library does so at compile time, and each group may double
// the work.
//
// At most `limit` are counted, so that the time taken is proportional to it and
// the pattern's length at most; 0 for a pattern without calls. Takes memory
// proportional to the pattern, and constant stack. Any thread.
std::size_t callReach(std::string_view pattern, std::size_t limit);

}  // namespace QorCliPipe

#endif
