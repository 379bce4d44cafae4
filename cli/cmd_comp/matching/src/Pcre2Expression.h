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

// Gives back what PCRE2 has made.
template <auto free>
struct Pcre2Free {
  template <class T>
  void operator()(T* made) const {
    free(made);
  }
};

using Pcre2Code = std::unique_ptr<pcre2_code, Pcre2Free<pcre2_code_free>>;
using Pcre2MatchData =
    std::unique_ptr<pcre2_match_data, Pcre2Free<pcre2_match_data_free>>;
using Pcre2MatchContext =
    std::unique_ptr<pcre2_match_context, Pcre2Free<pcre2_match_context_free>>;
using Pcre2JitStack =
    std::unique_ptr<pcre2_jit_stack, Pcre2Free<pcre2_jit_stack_free>>;

// Whether `item`, a character, an escape or a class, takes `c`. Any thread.
bool takesCharacter(std::string_view item, char c, bool ignoreCase);

// A pattern that PCRE2 matches with JIT code that nothing interrupts: for those
// whose backtracking is known to be little. Used by one thread at a time.
class PlainExpression {
 public:
  enum class Answer { kMatch, kNoMatch, kUnknown };

  // `pattern` is valid and refers to no group. `skipsStarts`: PCRE2 looks for
  // start offsets at which there may be a match, instead of trying all.
  PlainExpression(std::string const& pattern, bool ignoreCase,
                  bool skipsStarts);

  // Whether there is a match in `text` that begins at `from` or behind it:
  // unknown without JIT code, and when the 32 KiB that it takes of the stack
  // are too little.
  Answer match(std::string_view text, std::size_t from = 0) const;

  // Of the match that was found last: where it begins and ends.
  std::size_t begin() const {
    return pcre2_get_ovector_pointer(data_.get())[0];
  }
  std::size_t end() const { return pcre2_get_ovector_pointer(data_.get())[1]; }

 private:
  Pcre2Code code_;
  Pcre2MatchData data_;
};

// A pattern that PCRE2 matches until time is up: any that it knows. Used by one
// thread at a time.
class TimedExpression {
 public:
  // Throws PatternError when the pattern is malformed, or longer than 64 KiB:
  // PCRE2's compiled form holds no more than that.
  TimedExpression(std::string const& pattern, bool ignoreCase);

  // The items of `pattern`, which is that of the constructor. None when PCRE2
  // does not tell, or reads some of its text for something else than items.
  std::vector<std::string_view> items(std::string_view pattern) const;

  bool mayMatchNothing() const;

  // Lines are matched by JIT code from now on, where that is available, and not
  // by the interpreter.
  void useJitCode() { usesJitCode_ = true; }

  // Whether the first match in `line` is not empty. Throws PatternError when
  // `budget` is spent before that is known or would be between two looks at the
  // clock, when it takes more than 128 MiB of memory, and when PCRE2 has a
  // reason of its own not to answer.
  bool matches(std::string_view line, TimeBudget& budget);

 private:
  int match(std::string_view line, std::size_t start,
            std::uint32_t options) const;
  int matchUnderClock(std::string_view line, TimeBudget& budget);
  int matchWithinSteps(std::string_view line, TimeBudget& budget);
  void growJitStack();

  std::size_t patternSize_;  // bytes
  std::size_t longestItem_;  // bytes
  bool hasVerbs_;            // or something else that spans start offsets
  Pcre2Code code_;
  Pcre2MatchData data_;
  Pcre2MatchContext context_;
  Pcre2JitStack stack_;  // none, until a line needs it
  bool hasCallouts_ = true;
  bool usesJitCode_ = false;
  bool hasJitCode_ = false;  // or there is none
  int unseen_ = 0;           // callouts until the next look at the clock
};

}  // namespace QorCliMatching

#endif
