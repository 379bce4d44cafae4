#include "JitExpression.h"
#include "Pcre2Pattern.h"

namespace QorCliPipe {
namespace {

constexpr std::size_t kFirstMatchStack = 32 * 1024;  // bytes
constexpr std::uint32_t kOffsetPairs = 1;            // the whole match

// Machine code finds something else than Poco where a text of varying length is
// looked for behind; older versions of the library have no such patterns.
CompileContext machineCodeContext() {
  CompileContext context = compileContext();
#if PCRE2_MINOR >= 43
  if (context) pcre2_set_max_varlookbehind(context.get(), 0);
#endif
  return context;
}

template <typename Value>
Value info(Pattern const& pattern, std::uint32_t what) {
  Value value{};
  pcre2_pattern_info(pattern.get(), what, &value);
  return value;
}

bool hasOption(Pattern const& pattern, std::uint32_t option) {
  return (info<std::uint32_t>(pattern, PCRE2_INFO_ALLOPTIONS) & option) != 0;
}

// A line has only one beginning of a line.
bool hasOneBeginning(Pattern const& pattern) {
  constexpr std::uint32_t kBeginningsOfLines = 2;
  return hasOption(pattern, PCRE2_ANCHORED) ||
         info<std::uint32_t>(pattern, PCRE2_INFO_FIRSTCODETYPE) ==
             kBeginningsOfLines;
}

}  // namespace

bool const JitExpression::kMatchesOnStack = false;
bool const JitExpression::kHasLooseRepetitions = PCRE2_MINOR >= 43;
bool const JitExpression::kCopiesWhatLooksAround = true;

struct JitExpression::Code {
  Pattern pattern;
  Owned<pcre2_match_data> data;
  Owned<pcre2_jit_stack> stack;
  Owned<pcre2_match_context> context;
  bool usable = false;
};

// The machine code takes a line in a UTF mode on trust, which Poco checks. And
// unlike Poco's matching, it may look behind the line's beginning for a match
// that the library says begins there.
JitExpression::JitExpression(std::string const& pattern, bool ignoreCase,
                             Beginning beginning)
    : code_(std::make_unique<Code>()) {
  std::uint32_t const options = compileOptions(ignoreCase);
  CompileContext const context = machineCodeContext();
  code_->pattern = compiled(pattern, options, context);
  if (!code_->pattern || hasOption(code_->pattern, PCRE2_UTF)) return;
  if (beginning == Beginning::kHere || hasOneBeginning(code_->pattern)) {
    code_->pattern = compiled(pattern, options | PCRE2_ANCHORED, context);
    if (!code_->pattern) return;
  }
  if (pcre2_jit_compile(code_->pattern.get(), PCRE2_JIT_COMPLETE) != 0 ||
      info<std::size_t>(code_->pattern, PCRE2_INFO_JITSIZE) == 0) {
    return;
  }
  code_->data.reset(pcre2_match_data_create(kOffsetPairs, nullptr));
  code_->stack.reset(
      pcre2_jit_stack_create(kFirstMatchStack, kMatchStackLimit, nullptr));
  code_->context.reset(pcre2_match_context_create(nullptr));
  if (!code_->data || !code_->stack || !code_->context) return;
  pcre2_jit_stack_assign(code_->context.get(), nullptr, code_->stack.get());
  code_->usable = true;
}

JitExpression::~JitExpression() = default;

bool JitExpression::isUsable() const { return code_->usable; }

JitExpression::Answer JitExpression::match(std::string_view line,
                                           std::size_t start,
                                           std::uint32_t stepLimit) const {
  if (!isUsable()) return Answer::kUndecided;
  pcre2_set_match_limit(code_->context.get(), stepLimit);
  int const status = pcre2_jit_match(
      code_->pattern.get(), reinterpret_cast<PCRE2_SPTR>(line.data()),
      line.size(), start, 0, code_->data.get(), code_->context.get());
  return answerOf(status, code_->data.get(), line);
}

JitExpression::Traits JitExpression::traits(std::string const& pattern,
                                            bool ignoreCase) {
  Pattern const code =
      compiled(pattern, compileOptions(ignoreCase), compileContext());
  if (!code) return {};
  return {info<std::uint32_t>(code, PCRE2_INFO_CAPTURECOUNT),
          hasOption(code, PCRE2_UTF), hasOneBeginning(code)};
}

}  // namespace QorCliPipe
