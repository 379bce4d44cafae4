#ifndef QOR_CLI_JIT_EXPRESSION_H
#define QOR_CLI_JIT_EXPRESSION_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace QorCliPipe {

// A regular expression in machine code, made by the just-in-time compiler of
// the PCRE library that Poco is built on.
//
// Matching takes a constant part of the caller's stack: the code has a match
// stack of its own on the heap, of at most kMatchStackLimit bytes, of which
// only what is used takes memory. Used by one thread at a time.
class JitExpression {
 public:
  enum class Answer {
    kMatch,       // the first match is not empty
    kEmptyMatch,  // the first match is empty
    kNoMatch,
    kUndecided,  // there is no machine code, or it gave up
  };

  static constexpr std::size_t kMatchStackLimit = std::size_t{64} << 20;

  // Where match() looks for a match.
  enum class Beginning {
    kAnywhere,  // from the place it is given on
    kHere,      // at that place only
  };

  // Whether the library matches on the caller's stack where there is no machine
  // code; it takes memory for that otherwise.
  static bool const kMatchesOnStack;

  // Whether the library takes {,3} and { 1, 3 } for repetitions, and in UTF-8
  // blanks beyond ASCII for blanks; they are plain texts otherwise.
  static bool const kHasLooseRepetitions;

  // Whether the library copies what looks around, as in (?=a){0,3}.
  static bool const kCopiesWhatLooksAround;

  // What the library says of a pattern.
  struct Traits {
    std::size_t groups;  // capturing ones
    bool isUtf8;         // lines are taken for UTF-8
    bool oneBeginning;   // matches are looked for at the line's beginning only
  };

  // Compiles `pattern`. When that does not work out, every line is undecided.
  JitExpression(std::string const& pattern, bool ignoreCase,
                Beginning beginning);
  ~JitExpression();

  // Whether there is machine code.
  bool isUsable() const;

  // Looks for the first match in `line`, at `start` or from there on; at most
  // line.size(). Gives up when more than `stepLimit` backtracking points
  // have to be tried from one beginning.
  Answer match(std::string_view line, std::size_t start,
               std::uint32_t stepLimit) const;

  // All 0 and false when the pattern cannot be compiled.
  static Traits traits(std::string const& pattern, bool ignoreCase);

 private:
  struct Code;
  std::unique_ptr<Code> code_;
};

}  // namespace QorCliPipe

#endif
