#ifndef QOR_CLI_PATTERN_TRAITS_H
#define QOR_CLI_PATTERN_TRAITS_H

#include <string_view>

namespace QorCliPipe {

// What can be told of a regular expression from its text. Each errs on the safe
// side: a mark that is found counts, even where it is only a plain text. All
// take time proportional to the pattern.

// Whether machine code is not known to find something else than Poco's
// matching: as it is with verbs, possessive groups, references to groups by
// name or to be matched again, long looks ahead and
// atomic groups with empty alternatives.
bool machineCodeAgrees(std::string_view pattern);

// Whether the library may look at much of a line within one step of
// backtracking: where characters are repeated, in atomic and possessive parts,
// looks around, conditions, and references to groups.
bool stepsMayBeLong(std::string_view pattern);

// Whether "\G(?:pattern)" means the pattern, bound to the place where matching
// begins: not when the pattern must stand first, or refers to that place or to
// itself.
bool canBeAnchored(std::string_view pattern);

// Whether a match of the pattern, if there is one in a line, can begin at the
// line's first byte.
bool hasOneBeginning(std::string_view pattern);

}  // namespace QorCliPipe

#endif
