#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include "JitExpression.h"

namespace QorCliPipe {
namespace {

constexpr std::size_t kFirstMatchStack = 32 * 1024;  // bytes
constexpr std::uint32_t kOffsetPairs = 1;            // the whole match

struct Free {
  void operator()(pcre2_code* code) const { pcre2_code_free(code); }
  void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
  void operator()(pcre2_match_context* context) const {
    pcre2_match_context_free(context);
  }
  void operator()(pcre2_jit_stack* stack) const { pcre2_jit_stack_free(stack); }
};

template <class T>
using Owned = std::unique_ptr<T, Free>;

}  // namespace

struct JitExpression::Code {
  Owned<pcre2_code> pattern;
  Owned<pcre2_match_data> data;
  Owned<pcre2_jit_stack> stack;
  Owned<pcre2_match_context> context;
  bool usable = false;

  std::uint32_t info(std::uint32_t what) const {
    std::uint32_t value = 0;
    pcre2_pattern_info(pattern.get(), what, &value);
    return value;
  }

  // The machine code takes a line in a UTF mode on trust; Poco checks it.
  bool inUtfMode() const {
    return (info(PCRE2_INFO_ALLOPTIONS) & PCRE2_UTF) != 0;
  }

  bool hasMachineCode() const {
    std::size_t size = 0;
    pcre2_pattern_info(pattern.get(), PCRE2_INFO_JITSIZE, &size);
    return size != 0;
  }
};

JitExpression::JitExpression(std::string const& pattern, bool ignoreCase)
    : code_(std::make_unique<Code>()) {
  int error = 0;
  PCRE2_SIZE errorOffset = 0;
  code_->pattern.reset(pcre2_compile(
      reinterpret_cast<PCRE2_SPTR>(pattern.c_str()), pattern.size(),
      ignoreCase ? PCRE2_CASELESS : 0U, &error, &errorOffset, nullptr));
  if (!code_->pattern || code_->inUtfMode()) return;
  if (pcre2_jit_compile(code_->pattern.get(), PCRE2_JIT_COMPLETE) != 0 ||
      !code_->hasMachineCode()) {
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
  if (status == PCRE2_ERROR_NOMATCH) return Answer::kNoMatch;
  if (status < 0) return Answer::kUndecided;
  PCRE2_SIZE const* const offsets =
      pcre2_get_ovector_pointer(code_->data.get());
  // A match may be made to begin behind its end; Poco takes the rest of the
  // line for its text then.
  PCRE2_SIZE const end = offsets[0] > offsets[1] ? line.size() : offsets[1];
  return offsets[0] == end ? Answer::kEmptyMatch : Answer::kMatch;
}

int JitExpression::groups(std::string const& pattern) {
  int error = 0;
  PCRE2_SIZE offset = 0;
  Owned<pcre2_code> const compiled(
      pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.c_str()),
                    pattern.size(), 0, &error, &offset, nullptr));
  if (!compiled) return 0;
  std::uint32_t groups = 0;
  pcre2_pattern_info(compiled.get(), PCRE2_INFO_CAPTURECOUNT, &groups);
  return static_cast<int>(groups);
}

}  // namespace QorCliPipe
