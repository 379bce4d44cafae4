#ifndef QOR_CLI_PCRE_PATTERN_H
#define QOR_CLI_PCRE_PATTERN_H

#include <pcre.h>

#include <memory>
#include <string>
#include <string_view>

#include "JitExpression.h"

namespace QorCliPipe {

// What the classes that use PCRE have in common. Any thread.

// Gives back a compiled pattern.
struct FreePattern {
  void operator()(pcre* pattern) const { pcre_free(pattern); }
};

using Pattern = std::unique_ptr<pcre, FreePattern>;

inline int compileOptions(bool ignoreCase) {
  return PCRE_NEWLINE_LF | (ignoreCase ? PCRE_CASELESS : 0);
}

// Null when the pattern cannot be compiled.
inline Pattern compiled(std::string const& pattern, int options) {
  char const* error = nullptr;
  int errorOffset = 0;
  return Pattern(
      pcre_compile(pattern.c_str(), options, &error, &errorOffset, nullptr));
}

template <typename Value>
Value info(pcre const* pattern, pcre_extra const* study, int what) {
  Value value{};
  pcre_fullinfo(pattern, study, what, &value);
  return value;
}

// What a match says that returned `status` and, when it is found, the first two
// of `offsets`. It may be made to begin behind its end; Poco takes the rest of
// the line for its text then.
inline JitExpression::Answer answerOf(int status, int const* offsets,
                                      std::string_view line) {
  if (status == PCRE_ERROR_NOMATCH) return JitExpression::Answer::kNoMatch;
  if (status < 0) return JitExpression::Answer::kUndecided;
  auto const size = static_cast<int>(line.size());
  int const end = offsets[0] > offsets[1] ? size : offsets[1];
  return offsets[0] == end ? JitExpression::Answer::kEmptyMatch
                           : JitExpression::Answer::kMatch;
}

}  // namespace QorCliPipe

#endif
