#include "PluginTest.h"

#include <stdexcept>

namespace qor_test {

PluginTest::PluginTest(std::string const& library) : plugin(library) {
  if (plugin.init(&portal.accessor, nullptr) != 0) {
    throw std::runtime_error("the plug-in cannot be initialised");
  }
  interface = portal.registered->providedInterfaces[0];
}

PluginTest::~PluginTest() { plugin.terminate(); }

ActionResult PluginTest::use(unsigned action, unsigned actionId,
                             std::string const& line,
                             std::string const& input) {
  unsigned matches = 0;
  std::int32_t const status = interface->useModule(
      &session.record, action, actionId, &matches, line.c_str(), input.c_str());
  return {status, matches};
}

}  // namespace qor_test
