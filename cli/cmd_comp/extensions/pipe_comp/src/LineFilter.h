#ifndef QOR_CLI_LINE_FILTER_H
#define QOR_CLI_LINE_FILTER_H

#include <cstddef>
#include <string>
#include <string_view>

#include "ContextRules.h"
#include "LineMatcher.h"
#include "RequiredText.h"
#include "TextSearch.h"

namespace QorCliPipe {

// Tells the lines of a text that match a regular expression from those that do
// not, and hands them to the context rules.
//
// Lines between two occurrences of a text that every match must contain are
// never matched, where the expression has such a text. The compiled expression
// serves any number of texts. Used by one thread at a time.
class LineFilter {
 public:
  enum class Skipping { kOn, kOff };

  // Compiles `pattern`. Throws Poco::RegularExpressionException as LineMatcher
  // does. Skipping makes no difference but to the time, and that no line is
  // given up on that cannot match.
  LineFilter(std::string const& pattern, bool ignoreCase,
             Skipping skipping = Skipping::kOn);

  // Whether this is the filter for that expression.
  bool isFor(std::string const& pattern, bool ignoreCase) const;

  // Pushes the lines of `text` into `rules`: those that match as wanted and the
  // others as unwanted or, with `invert`, the other way round. Text behind the
  // last line feed is no line. Throws Poco::RegularExpressionException when the
  // expression gives up on a line; the lines before it have been pushed then.
  void filter(std::string_view text, bool invert, ContextRules& rules);

 private:
  std::size_t nextCandidate(std::string_view text, std::size_t begin);
  bool matches(std::string_view line);

  std::string pattern_;
  bool ignoreCase_;
  LineMatcher matcher_;
  RequiredText required_;
  AnyTextSearch search_;
};

}  // namespace QorCliPipe

#endif
