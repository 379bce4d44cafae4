#ifndef QOR_CLI_PCRE2_EXPRESSION_H
#define QOR_CLI_PCRE2_EXPRESSION_H

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "TimeBudget.h"

namespace QorCliMatching {

// Deleter for PCRE2's objects.
template <auto free>
struct Pcre2Free {
  template <class T>
  void operator()(T* object) const {
    free(object);
  }
};

using Pcre2Code = std::unique_ptr<pcre2_code, Pcre2Free<pcre2_code_free>>;
using Pcre2MatchData =
    std::unique_ptr<pcre2_match_data, Pcre2Free<pcre2_match_data_free>>;
using Pcre2MatchContext =
    std::unique_ptr<pcre2_match_context, Pcre2Free<pcre2_match_context_free>>;
using Pcre2JitStack =
    std::unique_ptr<pcre2_jit_stack, Pcre2Free<pcre2_jit_stack_free>>;

// Whether `item`, a character, an escape or a class, matches `c`. Any thread.
bool matchesCharacter(std::string_view item, char c, bool ignoreCase);

// A pattern matched by PCRE2's JIT code, which cannot be interrupted: for
// patterns with little backtracking. Used by one thread at a time.
class PlainExpression {
 public:
  enum class Answer { kMatch, kNoMatch, kUnknown };

  // `pattern` is valid and has no back references and subroutine calls.
  // `startOptimizations`: PCRE2 skips start offsets at which no match can
  // start.
  PlainExpression(std::string const& pattern, bool ignoreCase,
                  bool startOptimizations);

  // Whether there is a match in `text` that starts at or after `from`: unknown
  // without JIT support, and when 32 KiB of JIT stack are not enough.
  Answer match(std::string_view text, std::size_t from = 0) const;

  // Byte offsets of the last match.
  std::size_t begin() const {
    return pcre2_get_ovector_pointer(data_.get())[0];
  }
  std::size_t end() const { return pcre2_get_ovector_pointer(data_.get())[1]; }

 private:
  Pcre2Code code_;
  Pcre2MatchData data_;
};

// Any pattern that PCRE2 accepts, matched with a time limit. Used by one thread
// at a time.
class TimedExpression {
 public:
  // Throws PatternError when the pattern is malformed or longer than 64 KiB,
  // the limit of PCRE2's compiled form.
  TimedExpression(std::string const& pattern, bool ignoreCase);

  // The items of `pattern`, which is the one passed to the constructor. None if
  // PCRE2 does not report them or they do not cover the whole pattern.
  std::vector<std::string_view> items(std::string_view pattern) const;

  bool mayMatchEmpty() const;

  // Uses JIT code from now on, if it is available, and not the interpreter.
  void useJitCode() { usesJitCode_ = true; }

  // Whether the first match in `line` is not empty. Throws PatternError when
  // `budget` runs out first or might do so between two checks of the clock,
  // when matching takes more than 128 MiB of memory, and when PCRE2 fails.
  bool matches(std::string_view line, TimeBudget& budget);

 private:
  int match(std::string_view line, std::size_t start,
            std::uint32_t options) const;
  int matchWithCallouts(std::string_view line, TimeBudget& budget);
  int matchWithMatchLimit(std::string_view line, TimeBudget& budget);
  void growJitStack();

  std::size_t patternSize_;  // bytes
  std::size_t longestItem_;  // bytes
  bool hasVerbs_;            // or \G: start offsets are not independent
  Pcre2Code code_;
  Pcre2MatchData data_;
  Pcre2MatchContext context_;
  Pcre2JitStack stack_;  // null until a line needs it
  bool hasCallouts_ = true;
  bool usesJitCode_ = false;
  bool triedJitCode_ = false;
  int untilCheck_ = 0;  // callouts until the clock is next checked
};

}  // namespace QorCliMatching

#endif
