#ifndef QOR_CLI_PATTERN_READER_H
#define QOR_CLI_PATTERN_READER_H

#include <string>
#include <string_view>
#include <vector>

namespace QorCliMatching {

// What backtracking over a part of a pattern costs. From one start offset there
// are at most ways * bytes^loops paths through the part in a line of so many
// bytes, each of at most `length` items and `passes` over the line.
//
// `(a|b)[0-9]{1,3}x.*y` has 2 * 3 ways, for the alternatives and the counts;
// one loop, for where `.*` ends is tried anew at each y; and no passes. Of `\d+
// a` the loop is a pass instead: only all of the digits lead on to the blank.
struct Backtracking {
  static constexpr unsigned kUnbounded = 3;  // loops: no useful bound

  double ways = 1;
  unsigned loops = 0;  // quantifiers without a limit whose every end is tried
  double length = 0;
  double passes = 0;  // quantifiers without a limit of which one end leads on

  // Steps from one start offset, on average over those of a line of `bytes`: a
  // first loop reaches over half of the line, two over a sixth of its square.
  double steps(double bytes) const {
    double const reach = loops == 0   ? 1
                         : loops == 1 ? bytes / 2
                                      : bytes * bytes / 6;
    return ways * reach * (length + passes * bytes / 2);
  }
};

// What can be said of a regular expression without matching it.
struct PatternFacts {
  // Every line that matches contains at least one of these; none: nothing is
  // known. The case of ASCII letters does not count when case is ignored.
  std::vector<std::string> anyOf;
  // A line that contains one of them matches: the pattern is a plain text, or a
  // choice of such.
  bool sufficient = false;
  bool ignoreCase = false;  // by the option, or (?i) in front of all
  std::string regular;      // in RE2's syntax; empty when RE2 is not for it
  double size = 0;          // items of `regular`, repetitions written out
  Backtracking backtracking{1, Backtracking::kUnbounded, 1, 0};
  // A quantifier without a limit, and alternatives or an optional group. Where
  // one follows on the other, JIT code that looks for start offsets misses
  // matches.
  bool hasLoopAndChoice = false;
  // Every match has the same length, and does not depend on where lines begin
  // and end.
  bool isFixed = false;
  // PCRE2's JIT code with callouts finds what its interpreter finds. It does
  // not always where a group is atomic, possessive, referred to or called, or a
  // lookbehind varies in length.
  bool jitAgrees = false;
  // Why `regular` is empty or `backtracking` unbounded; empty when neither is
  // so. Static storage.
  char const* reason = "uncommon syntax";
};

// Reads the items of a valid pattern, as PCRE2 has taken it apart: characters,
// escapes and classes with their quantifiers, what opens and what closes a
// group, bars and anchors. Of a pattern with anything else in it, nothing is
// said.
//
// Takes time proportional to the pattern and constant stack. Throws
// std::bad_alloc only. Any thread.
PatternFacts readPattern(std::vector<std::string_view> const& texts,
                         bool ignoreCase);

}  // namespace QorCliMatching

#endif
