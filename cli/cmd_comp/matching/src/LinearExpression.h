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

// A regular expression that RE2 matches: in time proportional to the line,
// whatever the pattern. Used by one thread at a time.
//
// When memory runs out within RE2, std::bad_alloc is thrown; what RE2 held by
// then is lost, and the expression only good to be destroyed. One at a time is
// made or matches.
class LinearExpression {
 public:
  // `regular` is in RE2's syntax. RE2 writes out its counted repetitions before
  // it limits memory and time: the caller keeps their number low.
  LinearExpression(std::string const& regular, bool ignoreCase);
  ~LinearExpression();

  // False when RE2 does not know the pattern, or has not enough memory for it.
  bool isUsable() const;

  // What matching a line of so many bytes takes at most, in seconds of
  // processor time. Only when it is usable.
  double mostSeconds(std::size_t bytes) const;

  // Whether there is a match in `line`. Only when it is usable.
  bool matches(std::string_view line);

 private:
  std::unique_ptr<re2::RE2> expression_;
};

}  // namespace QorCliMatching

#endif
