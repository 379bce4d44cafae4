#include <limits>

#include "JitExpression.h"
#include "PcrePattern.h"

namespace QorCliPipe {
namespace {

constexpr int kFirstMatchStack = 32 * 1024;  // bytes
// Room for the whole match and, as the library wants it, a third for its work.
constexpr int kOffsets = 3;

struct FreeStudy {
  void operator()(pcre_extra* study) const { pcre_free_study(study); }
};
struct FreeStack {
  void operator()(pcre_jit_stack* stack) const { pcre_jit_stack_free(stack); }
};

bool hasOption(Pattern const& pattern, unsigned long option) {
  return (info<unsigned long>(pattern.get(), nullptr, PCRE_INFO_OPTIONS) &
          option) != 0;
}

// A line has only one beginning of a line.
bool hasOneBeginning(Pattern const& pattern) {
  constexpr int kBeginningsOfLines = 2;
  return hasOption(pattern, PCRE_ANCHORED) ||
         info<int>(pattern.get(), nullptr, PCRE_INFO_FIRSTCHARACTERFLAGS) ==
             kBeginningsOfLines;
}

}  // namespace

bool const JitExpression::kMatchesOnStack = true;
bool const JitExpression::kHasLooseRepetitions = false;
bool const JitExpression::kCopiesWhatLooksAround = false;

struct JitExpression::Code {
  Pattern pattern;
  std::unique_ptr<pcre_extra, FreeStudy> study;
  std::unique_ptr<pcre_jit_stack, FreeStack> stack;
};

// The machine code takes a line in a UTF mode on trust, which Poco checks. And
// unlike Poco's matching, it may look behind the line's beginning for a match
// that the library says begins there.
JitExpression::JitExpression(std::string const& pattern, bool ignoreCase,
                             Beginning beginning)
    : code_(std::make_unique<Code>()) {
  int const options = compileOptions(ignoreCase);
  code_->pattern = compiled(pattern, options);
  if (!code_->pattern || hasOption(code_->pattern, PCRE_UTF8)) return;
  if (beginning == Beginning::kHere || hasOneBeginning(code_->pattern)) {
    code_->pattern = compiled(pattern, options | PCRE_ANCHORED);
    if (!code_->pattern) return;
  }
  char const* error = nullptr;
  code_->study.reset(
      pcre_study(code_->pattern.get(), PCRE_STUDY_JIT_COMPILE, &error));
  if (!code_->study ||
      info<int>(code_->pattern.get(), code_->study.get(), PCRE_INFO_JIT) == 0) {
    return;
  }
  code_->stack.reset(pcre_jit_stack_alloc(kFirstMatchStack,
                                          static_cast<int>(kMatchStackLimit)));
}

JitExpression::~JitExpression() = default;

bool JitExpression::isUsable() const { return code_->stack != nullptr; }

JitExpression::Answer JitExpression::match(std::string_view line,
                                           std::size_t start,
                                           std::uint32_t stepLimit) const {
  if (!isUsable() || line.size() > std::numeric_limits<int>::max()) {
    return Answer::kUndecided;
  }
  code_->study->flags |= PCRE_EXTRA_MATCH_LIMIT;
  code_->study->match_limit = stepLimit;
  int offsets[kOffsets];
  int const status =
      pcre_jit_exec(code_->pattern.get(), code_->study.get(), line.data(),
                    static_cast<int>(line.size()), static_cast<int>(start), 0,
                    offsets, kOffsets, code_->stack.get());
  return answerOf(status, offsets, line);
}

JitExpression::Traits JitExpression::traits(std::string const& pattern,
                                            bool ignoreCase) {
  Pattern const code = compiled(pattern, compileOptions(ignoreCase));
  if (!code) return {};
  int const groups = info<int>(code.get(), nullptr, PCRE_INFO_CAPTURECOUNT);
  return {static_cast<std::size_t>(groups), hasOption(code, PCRE_UTF8),
          hasOneBeginning(code)};
}

}  // namespace QorCliPipe
