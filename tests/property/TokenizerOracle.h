#ifndef QOR_TEST_TOKENIZER_ORACLE_H
#define QOR_TEST_TOKENIZER_ORACLE_H

#include <cstddef>
#include <string>
#include <vector>

namespace qor_test {

// What the tokenizer makes of a line.
struct Tokenized {
  bool accepted;
  std::vector<std::string> tokens;
};

bool operator==(Tokenized const& a, Tokenized const& b);

// Lines that the oracle can be trusted with: its expressions take stack and
// time that grow with the line. In bytes.
constexpr std::size_t kLongestOracleLine = 2000;

// Cuts a line into tokens by searching it for regular expressions, step by
// step.
Tokenized tokenizedByExpressions(std::string const& line);

}  // namespace qor_test

#endif
