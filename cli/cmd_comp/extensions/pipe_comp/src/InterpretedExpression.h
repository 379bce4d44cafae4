#ifndef QOR_CLI_INTERPRETED_EXPRESSION_H
#define QOR_CLI_INTERPRETED_EXPRESSION_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "JitExpression.h"

namespace QorCliPipe {

// A regular expression that is matched as Poco does it, by the same function of
// the same library, but with room for any number of groups. Used by one thread
// at a time.
class InterpretedExpression {
 public:
  using Answer = JitExpression::Answer;
  using Beginning = JitExpression::Beginning;

  // What a match may take.
  struct Limits {
    std::uint32_t steps;    // from each beginning of a match
    std::size_t recursion;  // levels, where the library uses the stack
    std::size_t memory;     // KiB, where it uses memory instead
  };

  // Compiles `pattern`. When that does not work out, every line is undecided.
  InterpretedExpression(std::string const& pattern, bool ignoreCase);
  ~InterpretedExpression();

  // Looks for the first match in `line`, at `start` or from there on. Undecided
  // beyond the limits, and when the line is not in the UTF-8 that the pattern
  // wants, which is not looked at where `isChecked`.
  Answer match(std::string_view line, std::size_t start, Beginning beginning,
               bool isChecked, Limits const& limits) const;

 private:
  struct Code;
  std::unique_ptr<Code> code_;
};

}  // namespace QorCliPipe

#endif
