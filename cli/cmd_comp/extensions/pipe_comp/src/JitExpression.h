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

  // Compiles `pattern`. When that does not work out, every line is undecided.
  JitExpression(std::string const& pattern, bool ignoreCase);
  ~JitExpression();

  // Whether there is machine code.
  bool isUsable() const;

  // Looks for the first match in `line` that begins at `start` or behind it, at
  // most line.size(). Gives up when more than `stepLimit` backtracking points
  // have to be tried from one beginning.
  Answer match(std::string_view line, std::size_t start,
               std::uint32_t stepLimit) const;

  // The number of capturing groups of a pattern; 0 when it cannot be compiled.
  static int groups(std::string const& pattern);

 private:
  struct Code;
  std::unique_ptr<Code> code_;
};

}  // namespace QorCliPipe

#endif
