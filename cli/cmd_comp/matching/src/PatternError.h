#ifndef QOR_CLI_PATTERN_ERROR_H
#define QOR_CLI_PATTERN_ERROR_H

#include <stdexcept>

namespace QorCliMatching {

// Why a pattern was rejected, or why matching a line failed. what() is often
// PCRE2's own text: "missing closing parenthesis at offset 3". Offsets count
// bytes of the pattern from 0. It quotes neither pattern nor line.
class PatternError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace QorCliMatching

#endif
