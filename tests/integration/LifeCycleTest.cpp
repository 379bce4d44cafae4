#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Plugin.h"
#include "PluginTest.h"
#include "Portal.h"
#include "Session.h"

namespace qor_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// How many commands "filter" runs in the plug-in registered with `portal`.
unsigned filtersRun(Portal const& portal, Session& session) {
  unsigned matches = 0;
  EXPECT_EQ(0, portal.registered->providedInterfaces[0]->useModule(
                   &session.record, kExecute, 1, &matches, "filter a", "a\n"));
  return matches;
}

TEST(LifeCycle, InitFetchesThePortalAndThenRegisters) {
  Plugin plugin;
  Portal portal;
  EXPECT_EQ(0, plugin.init(&portal.accessor, "ignored"));
  EXPECT_THAT(portal.calls, ElementsAre("getPortal 1", "register"));
  EXPECT_NE(nullptr, portal.registered);
  plugin.terminate();
}

TEST(LifeCycle, TheConfigurationMayBeNull) {
  Plugin plugin;
  Portal portal;
  EXPECT_EQ(0, plugin.init(&portal.accessor, nullptr));
  plugin.terminate();
}

TEST(LifeCycle, TheTreeIsBuiltBeforeTheComponentIsRegistered) {
  Plugin plugin;
  Portal portal;
  Session session;
  static Session* caller;
  static unsigned matches;
  caller = &session;
  matches = 0;
  portal.record.registerComponent = [](ComponentRecord* component) {
    return component->providedInterfaces[0]->useModule(
        &caller->record, kExecute, 1, &matches, "filter a", "a\n");
  };
  EXPECT_EQ(0, plugin.init(&portal.accessor, nullptr));
  EXPECT_EQ(1U, matches);
  plugin.terminate();
}

TEST(LifeCycle, ARejectedRegistrationReturnsItsStatus) {
  for (std::int32_t const code : {7, -1, 2147483647}) {
    Plugin plugin;
    Portal portal;
    portal.registerResult = code;
    EXPECT_EQ(code, plugin.init(&portal.accessor, nullptr));
    EXPECT_THAT(portal.calls, ElementsAre("getPortal 1", "register"));
    plugin.terminate();
  }
}

TEST(LifeCycle, ARejectedRegistrationUndoesNothing) {
  Plugin plugin;
  Portal portal;
  Session session;
  portal.registerResult = 7;
  EXPECT_EQ(7, plugin.init(&portal.accessor, nullptr));
  EXPECT_EQ(1U, filtersRun(portal, session));
  plugin.terminate();
  EXPECT_THAT(portal.calls,
              ElementsAre("getPortal 1", "register", "unregister"));
}

TEST(LifeCycle, TerminateUnregistersTheSameComponent) {
  Plugin plugin;
  Portal portal;
  portal.unregisterResult = 7;
  ASSERT_EQ(0, plugin.init(&portal.accessor, nullptr));
  plugin.terminate();
  EXPECT_THAT(portal.calls,
              ElementsAre("getPortal 1", "register", "unregister"));
  EXPECT_EQ(portal.registered, portal.unregistered);
}

TEST(LifeCycle, TerminateWithoutInitCallsNothing) {
  Plugin plugin;
  Portal portal;
  plugin.terminate();
  EXPECT_THAT(portal.calls, IsEmpty());
}

TEST(LifeCycle, InitAfterAnEarlyTerminateBuildsTheTree) {
  Plugin plugin;
  Portal portal;
  Session session;
  plugin.terminate();
  ASSERT_EQ(0, plugin.init(&portal.accessor, nullptr));
  EXPECT_EQ(1U, filtersRun(portal, session));
  plugin.terminate();
}

TEST(LifeCycle, ATerminatedTreeIsEmpty) {
  Plugin plugin;
  Portal portal;
  Session session;
  ASSERT_EQ(0, plugin.init(&portal.accessor, nullptr));
  plugin.terminate();
  EXPECT_EQ(0U, filtersRun(portal, session));
  EXPECT_THAT(session.outputs, IsEmpty());
}

TEST(LifeCycle, ASecondInitRegistersAgainButTheTreeStaysEmpty) {
  Plugin plugin;
  Portal first;
  Session session;
  ASSERT_EQ(0, plugin.init(&first.accessor, nullptr));
  plugin.terminate();

  Portal second;
  ASSERT_EQ(0, plugin.init(&second.accessor, nullptr));
  EXPECT_THAT(second.calls, ElementsAre("getPortal 1", "register"));
  EXPECT_EQ(first.registered, second.registered);
  EXPECT_EQ(0U, filtersRun(second, session));
  plugin.terminate();
  EXPECT_EQ("unregister", second.calls.back());
}

TEST(LifeCycle, TerminateTwiceUnregistersTwice) {
  Plugin plugin;
  Portal portal;
  ASSERT_EQ(0, plugin.init(&portal.accessor, nullptr));
  plugin.terminate();
  plugin.terminate();
  EXPECT_THAT(portal.calls, ElementsAre("getPortal 1", "register", "unregister",
                                        "unregister"));
}

TEST(LifeCycle, TheLibraryIsReallyUnloaded) {
  Plugin plugin;
  Portal portal;
  Session session;
  EXPECT_TRUE(Plugin::isMapped());
  ASSERT_EQ(0, plugin.init(&portal.accessor, nullptr));
  ASSERT_EQ(1U, filtersRun(portal, session));
  plugin.terminate();
  EXPECT_TRUE(plugin.unload());
  EXPECT_FALSE(Plugin::isMapped());
}

TEST(LifeCycle, AReloadedLibraryStartsAfresh) {
  for (int load = 0; load < 3; ++load) {
    Plugin plugin;
    Portal portal;
    Session session;
    ASSERT_EQ(0, plugin.init(&portal.accessor, nullptr));
    EXPECT_EQ(1U, filtersRun(portal, session)) << "load " << load;
    plugin.terminate();
  }
}

TEST(LifeCycle, WithoutAnAccessorInitFailsAndTerminateIsSafe) {
  Plugin plugin;
  EXPECT_EQ(-1, plugin.init(nullptr, nullptr));
  plugin.terminate();
}

TEST(LifeCycle, WithoutAPortalInitFailsAndTerminateCallsNothing) {
  Plugin plugin;
  Portal portal;
  portal.accessor.getPortal = [](char const*) -> PortalRecord* {
    return nullptr;
  };
  EXPECT_EQ(-1, plugin.init(&portal.accessor, nullptr));
  plugin.terminate();
  EXPECT_THAT(portal.calls, IsEmpty());
}

class Component : public PluginTest {
 protected:
  ComponentRecord const& component() { return *portal.registered; }
};

TEST_F(Component, HasItsIdentity) {
  InterfaceIdentity const& identity = component().identity;
  EXPECT_STREQ("QorCliPipeCmdComp", identity.componentName);
  EXPECT_STREQ("QorMgmtSpiComponent", identity.interfaceName);
  EXPECT_STREQ("1", identity.interfaceVersion);
}

TEST_F(Component, ProvidesOneInterface) {
  InterfaceIdentity const& identity = interface->identity;
  EXPECT_STREQ("QorCliPipeCmdComp", identity.componentName);
  EXPECT_STREQ("QorCliApiPipeCommandComponent", identity.interfaceName);
  EXPECT_STREQ("1", identity.interfaceVersion);
  EXPECT_EQ(nullptr, component().providedInterfaces[1]);
}

TEST_F(Component, DependsOnALogAndOnAnyVersionOfATrace) {
  InterfaceIdentity const* const* dependencies = component().dependencies;
  ASSERT_NE(nullptr, dependencies[0]);
  EXPECT_EQ(nullptr, dependencies[0]->componentName);
  EXPECT_STREQ("QorMwSpiLog", dependencies[0]->interfaceName);
  EXPECT_STREQ("1", dependencies[0]->interfaceVersion);
  ASSERT_NE(nullptr, dependencies[1]);
  EXPECT_EQ(nullptr, dependencies[1]->componentName);
  EXPECT_STREQ("TavMwSpiTrace", dependencies[1]->interfaceName);
  EXPECT_EQ(nullptr, dependencies[1]->interfaceVersion);
  EXPECT_EQ(nullptr, dependencies[2]);
}

TEST_F(Component, ReportsTheModuleName) {
  EXPECT_STREQ("QorBasicCommands", interface->moduleName());
}

TEST_F(Component, StartAndStopDoNothing) {
  for (unsigned const reason : {0U, 3U, 4294967295U}) {
    EXPECT_EQ(0, component().start(reason));
    EXPECT_EQ(0, component().stop(reason));
  }
  EXPECT_EQ(1U, filtersRun(portal, session));
  EXPECT_THAT(portal.calls, ElementsAre("getPortal 1", "register"));
}

}  // namespace
}  // namespace qor_test
