#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "QorReturn.h"
#include "plugins/Framework.h"

namespace QorCliEngine {
namespace {

// A component that provides one interface, version 2.
struct Provider {
  QorMgmtSpiInterface_1 provided{"Provider", "Service", "2"};
  QorMgmtSpiInterface_1 const* list[2]{&provided, nullptr};
  QorMgmtSpiComponent_1 component{{"Provider", "QorMgmtSpiComponent", "1"},
                                  list,
                                  nullptr,
                                  [](QorStateChangeReason) { return 0; },
                                  [](QorStateChangeReason) { return 0; }};
};

class Interfaces : public testing::Test {
 protected:
  Interfaces() {
    EXPECT_EQ(framework.registerComponent(&provider.component), 0);
  }

  // The name and the component of the interface found, or the status.
  std::string found(char const* component, char const* interface,
                    char const* version) {
    void* record = nullptr;
    QorReturnT const status =
        framework.getInterface(component, interface, version, &record);
    if (status != QOR_RETURN_SUCCESS) {
      EXPECT_EQ(record, nullptr);
      return std::to_string(status);
    }
    auto const& identity = *static_cast<QorMgmtSpiInterface_1*>(record);
    return std::string(identity.componentName) + " " + identity.interfaceName;
  }

  Provider provider;
  Framework framework;
};

TEST_F(Interfaces, AreFoundByWhatIsNotNull) {
  struct {
    char const* component;
    char const* interface;
    char const* version;
    char const* found;
  } const rows[] = {
      {nullptr, "QorMwSpiLog", "1", "qorcli QorMwSpiLog"},
      {nullptr, "TavMwSpiTrace", nullptr, "qorcli TavMwSpiTrace"},
      {"qorcli", "TavMwSpiTrace", "1", "qorcli TavMwSpiTrace"},
      {nullptr, "TavMwSpiTrace", "2", "2"},
      {"Other", "TavMwSpiTrace", "1", "2"},
      {"Provider", "Service", "2", "Provider Service"},
      {nullptr, nullptr, "2", "Provider Service"},
      {"Provider", nullptr, nullptr, "Provider Service"},
      {"Provider", "Service", "1", "2"},
      {nullptr, "service", nullptr, "2"},
      {nullptr, "", nullptr, "2"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(found(row.component, row.interface, row.version), row.found);
  }
}

TEST_F(Interfaces, AreRecordsOfFunctions) {
  void* record = nullptr;
  EXPECT_EQ(framework.getInterface(nullptr, "Service", nullptr, &record), 0);
  EXPECT_EQ(record, &provider.provided);
}

TEST_F(Interfaces, GoWithTheirComponent) {
  EXPECT_EQ(framework.unregisterComponent(&provider.component), 0);
  EXPECT_EQ(found("Provider", "Service", "2"), "2");
}

TEST_F(Interfaces, NeedAPlaceToBeStoredIn) {
  EXPECT_EQ(framework.getInterface(nullptr, "Service", nullptr, nullptr),
            QOR_RETURN_INVALID_ARGUMENT);
}

TEST_F(Interfaces, OfFurtherInstancesAreFoundByNobody) {
  Provider further;
  {
    Framework::Registration const registration(framework,
                                               Framework::Registry::kCopies);
    EXPECT_EQ(framework.registerComponent(&provider.component),
              QOR_RETURN_INVALID_ARGUMENT);
    EXPECT_EQ(framework.refusal(), "its record is registered already");
    EXPECT_EQ(framework.registerComponent(&further.component), 0);
    EXPECT_THAT(registration.components(),
                testing::ElementsAre(&further.component));
  }
  EXPECT_THAT(framework.components(),
              testing::ElementsAre(&provider.component));
  EXPECT_EQ(framework.unregisterComponent(&provider.component), 0);
  EXPECT_EQ(found("Provider", "Service", "2"), "2");
  EXPECT_EQ(framework.unregisterComponent(&further.component), 0);
  EXPECT_EQ(framework.unregisterComponent(&further.component),
            QOR_RETURN_NOT_FOUND);
}

TEST_F(Interfaces, AreThoseOfOneComponentOfAName) {
  Provider other;
  Framework::Registration const registration(framework,
                                             Framework::Registry::kComponents);
  EXPECT_EQ(framework.refusal(), "");
  EXPECT_EQ(framework.registerComponent(&other.component),
            QOR_RETURN_INVALID_ARGUMENT);
  EXPECT_EQ(framework.refusal(), "there is a component \"Provider\" already");
  EXPECT_TRUE(registration.components().empty());
}

TEST(PipeInterfaces, NeedTheFunctionsThatAreCalled) {
  using Record = QorCliApiPipeCommandComponent_1;
  Record const whole{
      {"Piping", "QorCliApiPipeCommandComponent", "1"},
      [](QorCliApiContext_5*, unsigned, unsigned, unsigned*, char const*,
         char const*) { return QorReturnT{0}; },
      [] { return "piping"; },
      [](QorCliApiContext_5*, unsigned) { return QorReturnT{0}; }};
  struct {
    void (*take)(Record&);
    QorReturnT status;
  } const rows[] = {
      {[](Record&) {}, QOR_RETURN_SUCCESS},
      {[](Record& record) { record.useModule = nullptr; },
       QOR_RETURN_INVALID_ARGUMENT},
      {[](Record& record) { record.inputComplete = nullptr; },
       QOR_RETURN_INVALID_ARGUMENT},
  };
  for (auto const& row : rows) {
    Record record = whole;
    row.take(record);
    QorMgmtSpiInterface_1 const* const list[]{&record.identity, nullptr};
    QorMgmtSpiComponent_1 component{{"Piping", "QorMgmtSpiComponent", "1"},
                                    list,
                                    nullptr,
                                    [](QorStateChangeReason) { return 0; },
                                    [](QorStateChangeReason) { return 0; }};
    Framework framework;
    EXPECT_EQ(framework.registerComponent(&component), row.status);
  }
}

TEST(Portal, IsThatOfTheOneFramework) {
  auto const* const accessor = Framework::instance().accessor();
  EXPECT_EQ(accessor->getPortal("2"), nullptr);
  EXPECT_EQ(accessor->getPortal(nullptr), nullptr);
  auto const* const portal = accessor->getPortal("1");
  ASSERT_NE(portal, nullptr);
  void* record = nullptr;
  EXPECT_EQ(portal->getInterface(nullptr, "QorMwSpiLog", "1", &record), 0);
  EXPECT_STREQ(static_cast<QorMgmtSpiInterface_1*>(record)->interfaceName,
               "QorMwSpiLog");
  EXPECT_EQ(portal->getInterface(nullptr, "Service", nullptr, &record),
            QOR_RETURN_NOT_FOUND);
}

}  // namespace
}  // namespace QorCliEngine
