// Throws an exception of a type of its own out of the call that the environment
// variable THROW_IN names.

#include <cstdlib>
#include <exception>
#include <string>

#include "SmallPlugin.h"

namespace {

class PaperJam : public std::exception {
 public:
  explicit PaperJam(std::string const& call) : text_("jam in " + call) {}
  char const* what() const noexcept override { return text_.c_str(); }

 private:
  std::string text_;
};

void pass(std::string const& call) {
  char const* const throwing = std::getenv("THROW_IN");
  if (throwing != nullptr && call == throwing) throw PaperJam(call);
}

QorReturnT start(QorStateChangeReason) {
  pass("start");
  return 0;
}

QorReturnT stop(QorStateChangeReason) {
  pass("stop");
  return 0;
}

QorReturnT useModule(QorCliApiContext_5*, unsigned, unsigned, unsigned* matches,
                     char const*, char const*) {
  pass("useModule");
  ++*matches;
  return 0;
}

QorReturnT inputComplete(QorCliApiContext_5*, unsigned) {
  pass("inputComplete");
  return 0;
}

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  pass("qorLCMinit");
  SmallPlugin::component.start = start;
  SmallPlugin::component.stop = stop;
  SmallPlugin::pipe.useModule = useModule;
  SmallPlugin::pipe.inputComplete = inputComplete;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() {
  if (SmallPlugin::portal != nullptr) SmallPlugin::unregisterIt();
  pass("qorLCMterminate");
}
