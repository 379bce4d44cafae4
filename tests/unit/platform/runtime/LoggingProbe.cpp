// Writes with the logging facade as its argument says and prints the level.

#include <cstdio>
#include <string>

#include "OperationTrace.h"
#include "QorLoggingWrapper.h"

namespace {

using Qor::LoggingWrapper;
using Qor::Trace::Cli;

void writeRecords(LoggingWrapper& facade) {
  facade.trace_printf(Cli, "src/Probe.cpp", "run", 12, "plain %d%%", 7);
  facade.trace_v2_printf(Cli, 9, "Probe.cpp", "run", 13, " >> %s", "in");
  facade.log_printf(Cli, 4, "/a/b/Probe.cpp", "stop", 4294967295U, "lost %s",
                    "it");
}

int traceOperation() {
  QorCliUtilities::OperationTrace const trace("Probe.cpp", "operation", 1);
  QOR_CLI_TRACE("progress");
  QOR_CLI_LOG_ERROR("error");
  return trace.exitWith(0);
}

}  // namespace

int main(int argc, char** argv) {
  std::string const task = argc > 1 ? argv[1] : "";
  LoggingWrapper& facade = LoggingWrapper::instance();
  std::printf("%u\n", facade.get_level());
  if (task == "records") writeRecords(facade);
  if (task == "lines") {
    facade.trace_printf(Cli, "Probe.cpp", "run", 1, "one\ntwo");
  }
  if (task == "long") {
    facade.trace_printf(Cli, "Probe.cpp", "run", 1, "%s",
                        std::string(100000, 'x').c_str());
  }
  if (task == "operation") return traceOperation();
  return &facade == &LoggingWrapper::instance() ? 0 : 1;
}
