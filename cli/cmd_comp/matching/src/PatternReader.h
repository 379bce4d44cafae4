#ifndef QOR_CLI_PATTERN_READER_H
#define QOR_CLI_PATTERN_READER_H

#include <string>
#include <string_view>
#include <vector>

namespace QorCliMatching {

// The cost of backtracking over a part of a pattern. In a line of `bytes`,
// there are at most ways * bytes^loops paths through the part from one start
// offset, each of at most `length` items and `passes` over the line.
//
// `(a|b)[0-9]{1,3}x.*y` has 2 * 3 ways, for the alternatives and the counts,
// one loop, since `.*` may end at any y, and no passes. In `\d+ a` the
// quantifier is a pass: a blank can only follow the whole run of digits.
struct Backtracking {
  static constexpr unsigned kUnbounded = 3;  // value of `loops`

  double ways = 1;
  unsigned loops = 0;  // unbounded quantifiers that backtrack
  double length = 0;
  double passes = 0;  // unbounded quantifiers that can end in one place only

  // Steps from one start offset, averaged over all those of a line of `bytes`:
  // one loop covers half of the line, two cover a sixth of its square.
  double steps(double bytes) const {
    double const reach = loops == 0   ? 1
                         : loops == 1 ? bytes / 2
                                      : bytes * bytes / 6;
    return ways * reach * (length + passes * bytes / 2);
  }
};

// Static properties of a regular expression.
struct PatternFacts {
  // Required literals: every matching line contains at least one of these, in
  // any case of ASCII letters if case is ignored. Empty if none are known.
  std::vector<std::string> anyOf;
  // Every line that contains one of them matches: the pattern is a literal or
  // an alternation of literals.
  bool sufficient = false;
  bool ignoreCase = false;  // by the option, or a leading (?i)
  std::string regular;      // in RE2's syntax; empty if RE2 is unsuitable
  double size = 0;          // items of `regular`, counted quantifiers expanded
  Backtracking backtracking{1, Backtracking::kUnbounded, 1, 0};
  // An unbounded quantifier, and alternatives or an optional group. If one
  // follows the other, JIT code with start optimizations misses matches.
  bool hasLoopAndChoice = false;
  // All matches have the same length, and there are no line anchors.
  bool isFixed = false;
  // PCRE2's JIT code with callouts agrees with its interpreter. It may not with
  // atomic or possessive groups, back references, subroutine calls, and
  // lookbehinds of variable length.
  bool jitAgrees = false;
  // Why `regular` is empty or `backtracking` unbounded; empty if neither is.
  // Static storage.
  char const* reason = "uncommon syntax";
};

// Analyses the items of a valid pattern, as PCRE2 splits it: characters,
// escapes and classes with their quantifiers, opening and closing parentheses,
// bars and anchors. A pattern with any other item gets the default facts.
//
// Takes linear time and constant stack. Throws only std::bad_alloc. Any thread.
PatternFacts readPattern(std::vector<std::string_view> const& texts,
                         bool ignoreCase);

}  // namespace QorCliMatching

#endif
