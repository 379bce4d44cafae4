#include <limits>
#include <vector>

#include "InterpretedExpression.h"
#include "PcrePattern.h"

namespace QorCliPipe {

struct InterpretedExpression::Code {
  Pattern pattern;
  // The whole match and each group, and, as the library wants it, half as much
  // again for its work.
  std::vector<int> offsets;
};

InterpretedExpression::InterpretedExpression(std::string const& pattern,
                                             bool ignoreCase)
    : code_(std::make_unique<Code>()) {
  code_->pattern = compiled(pattern, compileOptions(ignoreCase));
  if (!code_->pattern) return;
  int const groups =
      info<int>(code_->pattern.get(), nullptr, PCRE_INFO_CAPTURECOUNT);
  code_->offsets.resize((static_cast<std::size_t>(groups) + 1) * 3);
}

InterpretedExpression::~InterpretedExpression() = default;

JitExpression::Answer InterpretedExpression::match(std::string_view line,
                                                   std::size_t start,
                                                   Beginning beginning,
                                                   bool isChecked,
                                                   Limits const& limits) const {
  if (!code_->pattern || line.size() > std::numeric_limits<int>::max()) {
    return Answer::kUndecided;
  }
  pcre_extra extra{};
  extra.flags = PCRE_EXTRA_MATCH_LIMIT | PCRE_EXTRA_MATCH_LIMIT_RECURSION;
  extra.match_limit = limits.steps;
  extra.match_limit_recursion = limits.recursion;
  int const options = (beginning == Beginning::kHere ? PCRE_ANCHORED : 0) |
                      (isChecked ? PCRE_NO_UTF8_CHECK : 0);
  int const status =
      pcre_exec(code_->pattern.get(), &extra, line.data(),
                static_cast<int>(line.size()), static_cast<int>(start), options,
                code_->offsets.data(), static_cast<int>(code_->offsets.size()));
  return answerOf(status, code_->offsets.data(), line);
}

}  // namespace QorCliPipe
