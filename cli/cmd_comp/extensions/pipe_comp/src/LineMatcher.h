#ifndef QOR_CLI_LINE_MATCHER_H
#define QOR_CLI_LINE_MATCHER_H

#include <Poco/RegularExpression.h>

#include <string>
#include <string_view>

namespace QorCliPipe {

// Decides whether a line matches a Perl-compatible regular expression.
//
// A line matches when the first match in it is not empty, so an expression that
// only ever matches nothing matches no line. Used by one thread at a time.
class LineMatcher {
 public:
  // Compiles `pattern`. Throws Poco::RegularExpressionException when it is
  // malformed.
  LineMatcher(std::string const& pattern, bool ignoreCase);

  // `line` comes without its line feed. Throws Poco::RegularExpressionException
  // when the line takes the expression too far to decide.
  bool matches(std::string_view line);

 private:
  Poco::RegularExpression expression_;
  std::string subject_;  // kept from line to line for their capacity
  std::string matched_;
};

}  // namespace QorCliPipe

#endif
