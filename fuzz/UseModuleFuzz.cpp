// A call of the component, for any action, line, input, mode, cursor and
// counter, returns without an exception.

#include <cstdlib>

#include "FuzzInput.h"
#include "FuzzSession.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data,
                                      std::size_t size) {
  static qor_fuzz::FuzzSession session;
  qor_fuzz::FuzzInput bytes(data, size);
  unsigned const action = bytes.byte() % 8;
  unsigned counter = bytes.byte() % 4;
  session.record()->mode = QorCliModeEnum_1T{bytes.byte() % 3U};
  std::string const cursor = bytes.line();
  session.record()->cursor = cursor.empty() ? nullptr : cursor.c_str();
  std::string const line = bytes.line();
  std::string const input = bytes.rest();
  unsigned const before = counter;
  session.commands().useModule(session.record(), action, 1, &counter,
                               line.c_str(), input.c_str());
  if (counter - before > 1) std::abort();
  if (counter != before && action != QOR_CLI_ACTION_EXECUTE) std::abort();
  session.commands().inputComplete(session.record(), 1);
  session.record()->cursor = nullptr;
  session.takeOutput();
  return 0;
}
