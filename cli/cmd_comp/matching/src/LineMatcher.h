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

// Decides in bounded time whether a line matches a Perl-compatible regular
// expression, with the answer of PCRE2's interpreter.
//
// A line matches when the first match in it is not empty, so an expression that
// only matches the empty string matches no line. Bytes are characters, unless
// the pattern selects UTF-8. Takes several hundred KiB of stack, which
// LineFilter provides. Used by one thread at a time.
class LineMatcher {
 public:
  enum class Strategy {
    kPlain,   // PCRE2's JIT code; long lines fall back to the others
    kLinear,  // RE2; lines too long for a large program fall back to kTimed
    kTimed,   // PCRE2 with a time limit
  };

  // Compiles `pattern`. With the timed strategy, the lines of one call may take
  // `seconds` of processor time. Throws PatternError when the pattern is
  // malformed or longer than 64 KiB.
  LineMatcher(std::string const& pattern, bool ignoreCase, double seconds);

  // Whether this matcher was compiled from this pattern and option.
  bool isFor(std::string const& pattern, bool ignoreCase) const {
    return ignoreCase == ignoreCase_ && pattern == pattern_;
  }

  PatternFacts const& facts() const { return facts_; }
  Strategy strategy() const { return strategy_; }

  // The longest line, in bytes, that the plain strategy matches.
  std::size_t maxPlainLine() const { return maxPlainLine_; }

  // Restarts the time budget: the lines that follow belong to another call.
  void beginCall() { budget_.restart(); }

  // `line` comes without its line feed. Throws PatternError when the timed
  // strategy fails: the call exceeds its time limit, the line is too long for
  // the pattern's largest class, matching takes too much memory, or the pattern
  // selects UTF-8 and the line is not valid UTF-8.
  bool matches(std::string_view line);

  // Whether find() may be called.
  bool canFind() const { return canFind_; }

  // A match, as byte offsets in a text.
  struct Span {
    std::size_t begin;  // npos: there is no match
    std::size_t end;
  };

  // The first match that starts at or after `from` in a text of several lines.
  // No line before it matches; its own line does if the match ends in it.
  // Requires canFind().
  Span find(std::string_view text, std::size_t from);

 private:
  PlainExpression const& plain();
  bool hasLinear();
  bool fitsInTime(std::size_t bytes);

  std::string pattern_;
  bool ignoreCase_;
  TimeBudget budget_;
  TimedExpression timed_;
  PatternFacts facts_;
  Strategy strategy_ = Strategy::kTimed;
  std::size_t maxPlainLine_ = 0;  // bytes
  bool canFind_ = false;
  // Compiled when a line first needs them.
  std::optional<PlainExpression> plain_;
  std::optional<LinearExpression> linear_;
};

}  // namespace QorCliMatching

#endif
