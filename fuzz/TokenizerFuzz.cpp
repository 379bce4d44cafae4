// The tokenizer agrees with its regular expressions on any line.

#include <cstdlib>

#include "AutoCompleteTree.h"
#include "FuzzInput.h"
#include "PipeOutput1.h"
#include "TokenizerOracle.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data,
                                      std::size_t size) {
  if (size > qor_test::kMaxOracleLine) return 0;
  std::string const line = qor_fuzz::FuzzInput(data, size).rest();
  QorCliUtilities::AutoCompleteTree const tree;
  QorCliPipe::PipeOutput1 output;
  qor_test::Tokenized result{false, {}};
  result.accepted = tree.tokenize(line, result.tokens, output);
  if (!(result == qor_test::tokenizedByExpressions(line))) std::abort();
  return 0;
}
