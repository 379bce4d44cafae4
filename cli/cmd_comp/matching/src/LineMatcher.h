#ifndef QOR_CLI_LINE_MATCHER_H
#define QOR_CLI_LINE_MATCHER_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "LinearExpression.h"
#include "PatternReader.h"
#include "Pcre2Expression.h"
#include "TimeBudget.h"

namespace QorCliMatching {

// Decides whether a line matches a Perl-compatible regular expression, in
// bounded time. The answer is that of PCRE2's interpreter.
//
// A line matches when the first match in it is not empty, so an expression that
// only ever matches nothing matches no line. Bytes are characters, unless the
// pattern says that it is in UTF-8. Takes some hundred KiB of stack: LineFilter
// has a stack of its own for that. Used by one thread at a time.
class LineMatcher {
 public:
  // Who answers.
  enum class Way {
    kPlain,   // PCRE2's JIT code; for long lines as the others
    kLinear,  // RE2; for lines that are too long for a large program as kTimed
    kTimed,   // PCRE2 under the clock
  };

  // Compiles `pattern`. The lines of one call may take `seconds` of processor
  // time in the timed way. Throws PatternError when the pattern is malformed,
  // or longer than 64 KiB.
  LineMatcher(std::string const& pattern, bool ignoreCase, double seconds);

  // Whether this is the matcher for that expression.
  bool isFor(std::string const& pattern, bool ignoreCase) const {
    return ignoreCase == ignoreCase_ && pattern == pattern_;
  }

  PatternFacts const& facts() const { return facts_; }
  Way way() const { return way_; }

  // In the plain way, lines of more bytes are long.
  std::size_t longestPlainLine() const { return longestPlain_; }

  // The lines that follow belong to another call.
  void beginCall() { budget_.restart(); }

  // `line` comes without its line feed. Throws PatternError where the timed way
  // has no answer: the lines of the call have used up their time, the line is
  // too long for the pattern's largest class, matching takes too much memory,
  // or the line is not UTF-8 and the pattern wants it to be.
  bool matches(std::string_view line);

  // Whether find() looks for a match in several lines at once.
  bool finds() const { return finds_; }

  // Of a match, in bytes from the begin of a text.
  struct Place {
    std::size_t begin;  // npos: there is no match
    std::size_t end;
  };

  // Where the first match is that begins at `from` or behind it, in a text of
  // several lines. No line in front of it has a match; its own line has one if
  // the match ends there. Only when finds().
  Place find(std::string_view text, std::size_t from);

 private:
  PlainExpression const& plain();
  bool hasLinear();
  bool maySpend(std::size_t bytes);

  std::string pattern_;
  bool ignoreCase_;
  TimeBudget budget_;
  TimedExpression timed_;
  PatternFacts facts_;
  Way way_ = Way::kTimed;
  std::size_t longestPlain_ = 0;
  bool finds_ = false;
  // None, until a line needs them.
  std::optional<PlainExpression> plain_;
  std::optional<LinearExpression> linear_;
};

}  // namespace QorCliMatching

#endif
