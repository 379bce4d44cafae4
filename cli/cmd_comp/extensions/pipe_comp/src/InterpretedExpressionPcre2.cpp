#include "InterpretedExpression.h"
#include "Pcre2Pattern.h"

namespace QorCliPipe {

struct InterpretedExpression::Code {
  Pattern pattern;
  Owned<pcre2_match_data> data;
  Owned<pcre2_match_context> context;
};

InterpretedExpression::InterpretedExpression(std::string const& pattern,
                                             bool ignoreCase)
    : code_(std::make_unique<Code>()) {
  code_->pattern =
      compiled(pattern, compileOptions(ignoreCase), compileContext());
  if (!code_->pattern) return;
  code_->data.reset(
      pcre2_match_data_create_from_pattern(code_->pattern.get(), nullptr));
  code_->context.reset(pcre2_match_context_create(nullptr));
}

InterpretedExpression::~InterpretedExpression() = default;

JitExpression::Answer InterpretedExpression::match(std::string_view line,
                                                   std::size_t start,
                                                   Beginning beginning,
                                                   bool isChecked,
                                                   Limits const& limits) const {
  if (!code_->data || !code_->context) return Answer::kUndecided;
  pcre2_set_match_limit(code_->context.get(), limits.steps);
  pcre2_set_heap_limit(code_->context.get(),
                       static_cast<std::uint32_t>(limits.memory));
  std::uint32_t const options =
      (beginning == Beginning::kHere ? PCRE2_ANCHORED : 0U) |
      (isChecked ? PCRE2_NO_UTF_CHECK : 0U);
  int const status = pcre2_match(
      code_->pattern.get(), reinterpret_cast<PCRE2_SPTR>(line.data()),
      line.size(), start, options, code_->data.get(), code_->context.get());
  return answerOf(status, code_->data.get(), line);
}

}  // namespace QorCliPipe
