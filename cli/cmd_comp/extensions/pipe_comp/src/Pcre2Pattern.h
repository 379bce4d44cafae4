#ifndef QOR_CLI_PCRE2_PATTERN_H
#define QOR_CLI_PCRE2_PATTERN_H

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "JitExpression.h"

namespace QorCliPipe {

// What the classes that use PCRE2 have in common. Any thread.

// Gives back what the library has made.
struct FreeOwned {
  void operator()(pcre2_code* code) const { pcre2_code_free(code); }
  void operator()(pcre2_compile_context* context) const {
    pcre2_compile_context_free(context);
  }
  void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
  void operator()(pcre2_match_context* context) const {
    pcre2_match_context_free(context);
  }
  void operator()(pcre2_jit_stack* stack) const { pcre2_jit_stack_free(stack); }
};

template <class T>
using Owned = std::unique_ptr<T, FreeOwned>;

using Pattern = Owned<pcre2_code>;
using CompileContext = Owned<pcre2_compile_context>;

inline std::uint32_t compileOptions(bool ignoreCase) {
  return ignoreCase ? PCRE2_CASELESS : 0U;
}

// Null when there is no memory.
inline CompileContext compileContext() {
  CompileContext context(pcre2_compile_context_create(nullptr));
  if (context) pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
  return context;
}

// Null when the pattern cannot be compiled, or `context` is null.
inline Pattern compiled(std::string const& pattern, std::uint32_t options,
                        CompileContext const& context) {
  if (!context) return nullptr;
  int error = 0;
  PCRE2_SIZE errorOffset = 0;
  return Pattern(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.c_str()),
                               pattern.size(), options, &error, &errorOffset,
                               context.get()));
}

// What a match says that returned `status` and, when it is found, left its
// place in `data`. It may be made to begin behind its end; Poco takes the rest
// of the line for its text then.
inline JitExpression::Answer answerOf(int status, pcre2_match_data* data,
                                      std::string_view line) {
  if (status == PCRE2_ERROR_NOMATCH) return JitExpression::Answer::kNoMatch;
  if (status < 0) return JitExpression::Answer::kUndecided;
  PCRE2_SIZE const* const offsets = pcre2_get_ovector_pointer(data);
  PCRE2_SIZE const end = offsets[0] > offsets[1] ? line.size() : offsets[1];
  return offsets[0] == end ? JitExpression::Answer::kEmptyMatch
                           : JitExpression::Answer::kMatch;
}

}  // namespace QorCliPipe

#endif
