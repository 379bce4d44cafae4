#include "LineMatcher.h"

namespace QorCliPipe {

LineMatcher::LineMatcher(std::string const& pattern, bool ignoreCase)
    : expression_(pattern,
                  ignoreCase ? Poco::RegularExpression::RE_CASELESS : 0, true) {
}

bool LineMatcher::matches(std::string_view line) {
  subject_.assign(line);
  expression_.extract(subject_, matched_, 0);
  return !matched_.empty();
}

}  // namespace QorCliPipe
