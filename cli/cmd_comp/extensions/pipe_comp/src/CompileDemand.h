#ifndef QOR_CLI_COMPILE_DEMAND_H
#define QOR_CLI_COMPILE_DEMAND_H

#include <cstddef>
#include <string_view>

namespace QorCliPipe {

// Upper bounds of what it takes to compile a regular expression.
struct CompileDemand {
  // Characters that are read when the calls of groups are followed: the
  // expression is read, at each call in it the group that is called, at each
  // call in that the next, and so on, but never a group from within itself; and
  // all that again for each group around a call. The library does so at compile
  // time, and each group may double the work. Or what is gone through to find
  // the groups that are called, when that is more. 0 for a pattern without
  // calls.
  std::size_t reach;

  // How deeply groups are nested, where a call of a group, or a reference to
  // its text, stands for the group: 0 for a pattern without a group.
  // Parentheses that are escaped, stand in a character class, in a \Q...\E text
  // or in a comment are no groups; where a pattern is hard to read, too many
  // are counted rather than too few. No bound where `reach` is at its limit.
  std::size_t levels;

  // Repetitions and alternatives: the library looks from each to the next when
  // one of them may be left out.
  std::size_t choices;
};

// `reach` is at most `reachLimit`, so that the time taken is proportional to it
// and the pattern's length at most. Takes memory proportional to the pattern,
// and constant stack. Any thread.
CompileDemand compileDemand(std::string_view pattern, std::size_t reachLimit);

}  // namespace QorCliPipe

#endif
