#ifndef QOR_TEST_TOKENIZER_ORACLE_H
#define QOR_TEST_TOKENIZER_ORACLE_H

#include <cstddef>
#include <string>
#include <vector>

namespace qor_test {

// The result of the tokenizer.
struct Tokenized {
  bool accepted;
  std::vector<std::string> tokens;
};

bool operator==(Tokenized const& a, Tokenized const& b);

// In bytes: the stack and the time of the oracle's expressions grow with the
// line.
constexpr std::size_t kMaxOracleLine = 2000;

// Tokenizes a line by searching it for regular expressions.
Tokenized tokenizedByExpressions(std::string const& line);

}  // namespace qor_test

#endif
