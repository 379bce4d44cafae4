#ifndef QOR_TEST_PLUGIN_TEST_H
#define QOR_TEST_PLUGIN_TEST_H

#include <gtest/gtest.h>

#include <string>

#include "Plugin.h"
#include "Portal.h"
#include "Session.h"

namespace qor_test {

// The result of an action.
struct ActionResult {
  std::int32_t status;
  unsigned commandMatchCount;  // 0 before the action
};

// A test of a loaded and initialised plug-in through its interface.
class PluginTest : public testing::Test {
 protected:
  explicit PluginTest(std::string const& library = QOR_CLI_PIPE_LIBRARY);
  ~PluginTest() override;

  // Performs an action of `session` as the CLI engine does.
  ActionResult use(unsigned action, unsigned actionId, std::string const& line,
                   std::string const& input = "");

  Plugin plugin;
  Portal portal;
  Session session;
  PipeCommandInterface const* interface = nullptr;
};

}  // namespace qor_test

#endif
