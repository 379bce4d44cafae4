// A text in several calls, whose input is completed now and then, produces the
// oracle's output over the lines between two completions.

#include <cstdlib>
#include <string>

#include "FilterOracle.h"
#include "FuzzInput.h"
#include "FuzzSession.h"

namespace {

constexpr unsigned kActionId = 7;

struct Command {
  qor_test::OracleContext context;
  bool invert;
};

std::string commandLine(Command const& command) {
  return std::string("filter") + (command.invert ? " -v" : "") + " -a " +
         std::to_string(command.context.after) + " -b " +
         std::to_string(command.context.before) + " M";
}

std::vector<std::string> expected(Command const& command,
                                  std::string const& text) {
  auto const selected = [&command](std::string const& line) {
    return (line.find('M') != std::string::npos) != command.invert;
  };
  return qor_test::keptLines(qor_test::oracleLines(text, selected),
                             command.context);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data,
                                      std::size_t size) {
  static qor_fuzz::FuzzSession session;
  qor_fuzz::FuzzInput bytes(data, size);
  unsigned const options = bytes.byte();
  Command const command{{options % 5U, options / 5U % 5U},
                        options / 25U % 2U != 0};
  std::string const line = commandLine(command);
  std::string chunk;
  std::string text;
  while (!bytes.empty()) {
    // Each byte is a line, the end of a chunk, or the end of the text.
    std::uint8_t const byte = bytes.byte();
    if (byte % 4 != 0) {
      std::string const oneLine =
          byte % 4 == 1 ? "M\n" : "x" + std::to_string(byte) + "\n";
      chunk += oneLine;
      text += oneLine;
      continue;
    }
    unsigned counter = 0;
    session.commands().useModule(session.record(), QOR_CLI_ACTION_EXECUTE,
                                 kActionId, &counter, line.c_str(),
                                 chunk.c_str());
    chunk.clear();
    if (counter != 1) std::abort();
    if (byte != 0) continue;
    if (session.takeOutput() != expected(command, text)) std::abort();
    session.commands().inputComplete(session.record(), kActionId);
    text.clear();
  }
  session.commands().inputComplete(session.record(), kActionId);
  session.takeOutput();
  return 0;
}
