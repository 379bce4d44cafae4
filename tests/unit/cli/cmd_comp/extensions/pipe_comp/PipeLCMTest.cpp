#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PipeCmdComp.h"
#include "PipeLCM.h"

namespace QorCliPipe {
namespace {

std::string shown(char const* text) { return text == nullptr ? "any" : text; }

// The portal's requests and answers.
std::vector<std::string> asked;
QorReturnT answer = 0;
int function = 0;  // in place of a function record

QorReturnT getInterface(char const* component, char const* interface,
                        char const* version, void** record) {
  asked.push_back(shown(component) + " " + shown(interface) + " " +
                  shown(version));
  *record = &function;
  return answer;
}

QorMgmtSpiInterfacePortal* portal(char const*) {
  static QorMgmtSpiInterfacePortal thePortal{};
  thePortal.getInterface = getInterface;
  thePortal.registerComponent = [](QorMgmtSpiComponent_1*) { return 0; };
  return &thePortal;
}

class LifeCycle : public testing::Test {
 protected:
  static PipeLCM& lifeCycle() { return PipeLCM::instance(); }

  static QorReturnT init() {
    QorMgmtSpiInterfacePortalAccessor accessor{portal};
    return lifeCycle().qorLCMinit(&accessor, nullptr);
  }
};

// The tests build on each other: a process has one life cycle.
TEST_F(LifeCycle, HasThePortalAfterInitialisation) {
  EXPECT_EQ(PipeLCM().getPortal(), nullptr);
  ASSERT_EQ(init(), 0);
  EXPECT_EQ(lifeCycle().getPortal(), portal("1"));
  lifeCycle().qorLCMterminate();
  EXPECT_EQ(lifeCycle().getPortal(), portal("1"));
}

TEST_F(LifeCycle, AsksThePortalForInterfaces) {
  ASSERT_EQ(init(), 0);
  asked.clear();
  answer = 0;
  EXPECT_EQ(lifeCycle().getInterface({"Component", "Interface", "3"}),
            &function);
  EXPECT_EQ(lifeCycle().getInterface({nullptr, "Interface", nullptr}),
            &function);
  EXPECT_EQ(asked, (std::vector<std::string>{"Component Interface 3",
                                             "any Interface any"}));
}

TEST_F(LifeCycle, HasNoInterfaceRejectedByThePortal) {
  ASSERT_EQ(init(), 0);
  for (QorReturnT const refusal : {-1, 2}) {
    answer = refusal;
    EXPECT_EQ(lifeCycle().getInterface({nullptr, "Interface", "1"}), nullptr);
  }
}

TEST(PipeCmdComp, HasOneComponentRecord) {
  QorMgmtSpiComponent_1* const record = PipeCmdComp::instance().getComponent();
  EXPECT_STREQ(record->identity.componentName, "QorCliPipeCmdComp");
  EXPECT_EQ(PipeCmdComp::instance().getComponent(), record);
}

}  // namespace
}  // namespace QorCliPipe
