#ifndef QOR_CLI_PATTERN_TRAITS_H
#define QOR_CLI_PATTERN_TRAITS_H

#include <string_view>

namespace QorCliPipe {

// What can be told of a regular expression from its text. Each errs on the safe
// side: a mark that is found counts, even where it is only a plain text. All
// take time proportional to the pattern. Any thread.

// Whether machine code is not known to find something else than Poco's
// matching: as it is with verbs, possessive groups, references to groups by
// name, groups to be matched again, and atomic groups with empty alternatives.
bool machineCodeAgrees(std::string_view pattern);

// Whether the library may look at much of a line within one step of
// backtracking: where characters are repeated a hundred times or without end,
// in atomic and possessive parts, looks around, conditions, references to
// groups, and in long patterns, as much as they are long.
bool stepsMayBeLong(std::string_view pattern);

// Whether the pattern matches a group of its own, or all of itself, again: the
// library looks through all that is under way at each step then.
bool callsGroups(std::string_view pattern);

// Whether the library may look for the other case of each character in a range
// of any of UTF-8's characters when it compiles the pattern.
bool mayFoldRanges(std::string_view pattern, bool ignoreCase);

// Whether the first match in a line is the one at the first of all beginnings
// at which there is one: not when the pattern says where to begin again, or
// what a line's end is, or refers to the place where matching begins.
bool beginningsAreIndependent(std::string_view pattern);

}  // namespace QorCliPipe

#endif
