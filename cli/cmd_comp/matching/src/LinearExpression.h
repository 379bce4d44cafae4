#ifndef QOR_CLI_LINEAR_EXPRESSION_H
#define QOR_CLI_LINEAR_EXPRESSION_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace re2 {
class RE2;
}

namespace QorCliMatching {

// A regular expression matched by RE2, in time linear in the line for any
// pattern. Used by one thread at a time.
//
// When RE2 runs out of memory, std::bad_alloc is thrown; the memory that RE2
// held is leaked, and the expression may only be destroyed. Only one may be
// constructed or matched at a time.
class LinearExpression {
 public:
  // `regular` is in RE2's syntax. RE2 expands counted quantifiers before any
  // limit on memory and time applies: the caller keeps the counts low.
  LinearExpression(std::string const& regular, bool ignoreCase);
  ~LinearExpression();

  // False when RE2 rejects the pattern or exceeds its memory limit.
  bool isUsable() const;

  // An upper bound for matching a line of `bytes`, in seconds of processor
  // time. Requires isUsable().
  double maxSeconds(std::size_t bytes) const;

  // Whether there is a match in `line`. Requires isUsable().
  bool matches(std::string_view line);

 private:
  std::unique_ptr<re2::RE2> expression_;
};

}  // namespace QorCliMatching

#endif
