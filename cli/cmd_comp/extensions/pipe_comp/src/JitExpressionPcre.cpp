#include <pcre.h>

#include <limits>

#include "JitExpression.h"

namespace QorCliPipe {
namespace {

constexpr int kFirstMatchStack = 32 * 1024;  // bytes
// Room for the whole match and, as the library wants it, a third for its work.
constexpr int kOffsets = 3;

struct FreePattern {
  void operator()(pcre* pattern) const { pcre_free(pattern); }
};
struct FreeStudy {
  void operator()(pcre_extra* study) const { pcre_free_study(study); }
};
struct FreeStack {
  void operator()(pcre_jit_stack* stack) const { pcre_jit_stack_free(stack); }
};

}  // namespace

struct JitExpression::Code {
  std::unique_ptr<pcre, FreePattern> pattern;
  std::unique_ptr<pcre_extra, FreeStudy> study;
  std::unique_ptr<pcre_jit_stack, FreeStack> stack;

  int info(int what) const {
    int value = 0;
    pcre_fullinfo(pattern.get(), study.get(), what, &value);
    return value;
  }

  // The machine code takes a line in a UTF mode on trust; Poco checks it.
  bool inUtfMode() const {
    unsigned long options = 0;
    pcre_fullinfo(pattern.get(), nullptr, PCRE_INFO_OPTIONS, &options);
    return (options & PCRE_UTF8) != 0;
  }
};

JitExpression::JitExpression(std::string const& pattern, bool ignoreCase)
    : code_(std::make_unique<Code>()) {
  char const* error = nullptr;
  int errorOffset = 0;
  code_->pattern.reset(pcre_compile(pattern.c_str(),
                                    ignoreCase ? PCRE_CASELESS : 0, &error,
                                    &errorOffset, nullptr));
  if (!code_->pattern || code_->inUtfMode()) return;
  code_->study.reset(
      pcre_study(code_->pattern.get(), PCRE_STUDY_JIT_COMPILE, &error));
  if (!code_->study || code_->info(PCRE_INFO_JIT) == 0) return;
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
  if (status == PCRE_ERROR_NOMATCH) return Answer::kNoMatch;
  if (status < 0) return Answer::kUndecided;
  // A match may be made to begin behind its end; Poco takes the rest of the
  // line for its text then.
  if (offsets[0] > offsets[1]) offsets[1] = static_cast<int>(line.size());
  return offsets[0] == offsets[1] ? Answer::kEmptyMatch : Answer::kMatch;
}

int JitExpression::groups(std::string const& pattern) {
  char const* error = nullptr;
  int value = 0;
  std::unique_ptr<pcre, FreePattern> const compiled(
      pcre_compile(pattern.c_str(), 0, &error, &value, nullptr));
  if (!compiled) return 0;
  pcre_fullinfo(compiled.get(), nullptr, PCRE_INFO_CAPTURECOUNT, &value);
  return value;
}

}  // namespace QorCliPipe
