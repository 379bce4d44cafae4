// Completion and help keep the promises of the options node for any words after
// the keyword.

#include <cstdlib>
#include <string>
#include <vector>

#include "ACFilterOptions.h"
#include "CliApiContext5.h"
#include "FuzzInput.h"
#include "PipeOutput1.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data,
                                      std::size_t size) {
  static QorCliPipe::ACFilterOptions node(
      {QOR_CLI_MODE_ANY}, QorCliUtilities::VALIDATION_NONE, true);
  static QorCliApiContext_5 record{};
  QorCliUtilities::CliApiContext5 context(&record);
  qor_fuzz::FuzzInput bytes(data, size);
  unsigned const flags = bytes.byte();
  std::vector<std::string> tokens{"filter"};
  while (!bytes.empty()) tokens.push_back(bytes.line());

  auto const count = static_cast<unsigned>(tokens.size());
  unsigned position = count - flags / 4U % 2U;
  unsigned const before = position;
  std::vector<QorCliUtilities::AutoCompleteResult> results;
  QorCliPipe::PipeOutput1 output;
  int const status =
      node.autoComplete(context, tokens, "", position, (flags & 1U) != 0,
                        (flags & 2U) != 0, results, output);
  bool const offered = status == 0 && position == before + 1;
  bool const rejected =
      status == -1 && position == before && results.empty() && count > 1;
  if (!offered && !rejected) std::abort();
  if (!output.getOutput().empty()) std::abort();
  return 0;
}
