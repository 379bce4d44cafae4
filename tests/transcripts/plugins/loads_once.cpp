// A pipe command whose library refuses to be initialised a second time in a
// process, and traces that: a line can have it once.

#include <cstdlib>
#include <string>

#include "QorLoggingWrapper.h"
#include "SmallPlugin.h"

namespace {

constexpr char kVariable[] = "QOR_TEST_LOADS_ONCE";

QorReturnT useModule(QorCliApiContext_5* context, unsigned action,
                     unsigned actionId, unsigned* matches,
                     char const* commandLine, char const* input) {
  if (action != QOR_CLI_ACTION_EXECUTE) return 0;
  if (std::string(commandLine) != "once") return 0;
  ++*matches;
  return context->setOutput(context, 0, 1, actionId, input);
}

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  if (std::getenv(kVariable) != nullptr) {
    Qor::LoggingWrapper& log = Qor::LoggingWrapper::instance();
    if (log.get_level() > 7) {
      log.trace_printf(Qor::Trace::Cli, __FILE__, __func__, __LINE__,
                       "refused");
    }
    return 1;
  }
  ::setenv(kVariable, "", 1);
  SmallPlugin::pipe.useModule = useModule;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() { SmallPlugin::unregisterIt(); }
