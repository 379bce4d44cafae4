#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Plugin.h"
#include "Portal.h"
#include "Session.h"

namespace qor_test {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// Whether the log contains the texts in this order.
MATCHER_P(HasInOrder, texts, "") {
  std::size_t place = 0;
  for (std::string const& text : texts) {
    place = arg.find(text, place);
    if (place == std::string::npos) {
      *result_listener << "lacks, or has too early: " << text;
      return false;
    }
    place += text.size();
  }
  return true;
}

// The log and the trace in a file. The facade reads its settings once per
// process, so each case runs in a fork.
class Log : public testing::Test {
 protected:
  Log() {
    if (mkdtemp(folder_.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
  }
  ~Log() override { std::filesystem::remove_all(folder_); }

  // Runs `steps` with the log level `level` and returns what was logged.
  std::string logOf(char const* level, std::function<void()> const& steps) {
    std::string const path = folder_ + "/log";
    EXPECT_EXIT(
        {
          setenv("QOR_LOG_LEVEL", level, 1);
          setenv("QOR_LOG_FILE", path.c_str(), 1);
          steps();
          std::exit(HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

 private:
  std::string folder_ = testing::TempDir() + "log-XXXXXX";
};

void rejectRegistration() {
  Plugin plugin;
  Portal portal;
  portal.registerResult = 7;
  EXPECT_EQ(7, plugin.init(&portal.accessor, nullptr));
}

// Initialises the plug-in, calls `step` with its interface, terminates it.
void withComponent(
    std::function<void(ComponentRecord const&, PipeCommandInterface const&)>
        step) {
  Plugin plugin;
  Portal portal;
  ASSERT_EQ(0, plugin.init(&portal.accessor, nullptr));
  step(*portal.registered, *portal.registered->providedInterfaces[0]);
  plugin.terminate();
}

TEST_F(Log, ARejectedRegistrationIsLoggedFromLevel4) {
  EXPECT_THAT(
      logOf("4", rejectRegistration),
      AllOf(HasSubstr("severity 4 "),
            HasSubstr(
                " qorLCMinit: Could not register Pipe Command component.\n")));
}

TEST_F(Log, ARejectedRegistrationIsLoggedOnceAtLevel7) {
  std::string const text = "Could not register Pipe Command component.";
  std::string const log = logOf("7", rejectRegistration);
  EXPECT_NE(std::string::npos, log.find(text));
  EXPECT_EQ(log.find(text), log.rfind(text));
}

TEST_F(Log, ARejectedRegistrationIsAlsoTracedFromLevel8) {
  std::string const log = logOf("8", rejectRegistration);
  EXPECT_THAT(log, AllOf(HasSubstr("severity 4 "),
                         HasSubstr("level 0 cli PipeLCM.cpp:")));
  std::string const text =
      " qorLCMinit: Could not register Pipe Command component.\n";
  EXPECT_NE(log.find(text), log.rfind(text));
}

TEST_F(Log, ARejectedRegistrationIsNotLoggedBelowLevel4) {
  EXPECT_THAT(logOf("3", rejectRegistration), IsEmpty());
}

TEST_F(Log, ARejectedRegistrationIsNotLoggedAtLevel0) {
  EXPECT_THAT(logOf("0", rejectRegistration), IsEmpty());
}

TEST_F(Log, ASuccessfulInitIsTraced) {
  EXPECT_THAT(
      logOf("8", [] { withComponent([](auto const&, auto const&) {}); }),
      AllOf(HasSubstr("level 0 cli PipeLCM.cpp:"),
            HasSubstr(" qorLCMinit: Inside PipeLCM::QorReturnT qorLCMinit \n"),
            HasSubstr(" qorLCMinit: Inside PipeLCM::QorReturnT register Pipe "
                      "Command component success \n"),
            Not(HasSubstr("severity"))));
}

TEST_F(Log, ASuccessfulRunWritesNothingAtLevel7) {
  EXPECT_THAT(
      logOf("7",
            [] {
              withComponent([](auto const& component, auto const& interface) {
                Session session;
                unsigned matches = 0;
                component.start(0);
                interface.useModule(&session.record, kExecute, 1, &matches,
                                    "filter a", "a\n");
                interface.useModule(&session.record, kComplete, 1, &matches,
                                    "filter ", "");
                interface.inputComplete(&session.record, 1);
                component.stop(0);
              });
            }),
      IsEmpty());
}

TEST_F(Log, StopTracesItsReason) {
  EXPECT_THAT(
      logOf("8",
            [] {
              withComponent([](auto const& component, auto const&) {
                component.stop(5);
              });
            }),
      ContainsRegex("\nlevel 9 cli PipeCmdComp\\.cpp:[0-9]+ stop:  >> Reason: "
                    "5\nlevel 10 cli PipeCmdComp\\.cpp:[0-9]+ stop:  << 0\n"));
}

TEST_F(Log, OtherActionsTraceTheirCountAndDoNothing) {
  EXPECT_THAT(
      logOf("8",
            [] {
              withComponent([](auto const&, auto const& interface) {
                Session session;
                unsigned matches = 3;
                interface.useModule(&session.record, 1, 1, &matches, "filter a",
                                    "a\n");
                matches = 4;
                interface.useModule(&session.record, 5, 1, &matches, "filter a",
                                    "a\n");
              });
            }),
      AllOf(HasSubstr(" useModule: PipeCmdComp commandMatchCount = 3\n"),
            HasSubstr(" useModule: PipeCmdComp commandMatchCount = 4\n"),
            Not(HasSubstr("executeCommand")),
            Not(HasSubstr("autoCompleteCommand")),
            Not(HasSubstr("helpRequest"))));
}

TEST_F(Log, AnExecutionTracesTheCountBeforeAndAfter) {
  EXPECT_THAT(
      logOf("8",
            [] {
              withComponent([](auto const&, auto const& interface) {
                Session session;
                unsigned matches = 2;
                interface.useModule(&session.record, kExecute, 9, &matches,
                                    "filter a", "a\n");
              });
            }),
      HasInOrder(std::vector<std::string>{
          "Before executeCommand commandMatchCount = 2, actionId = 9\n",
          "We found exact match node 'filter'\n", "We are at last token.\n",
          "After executeCommand commandMatchCount = 3, actionId = 9\n",
          "PipeCmdComp commandMatchCount = 3\n"}));
}

TEST_F(Log, NullPointersAreLogged) {
  std::string const log = logOf("4", [] {
    withComponent([](auto const&, auto const& interface) {
      Session session;
      unsigned matches = 0;
      interface.useModule(nullptr, kExecute, 1, &matches, "filter a", "a\n");
      interface.useModule(&session.record, kExecute, 1, nullptr, "filter a",
                          "a\n");
      interface.inputComplete(nullptr, 1);
    });
  });
  std::istringstream lines(log);
  unsigned count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    EXPECT_THAT(line, HasSubstr("severity 4 cli PipeCmdComp.cpp:"));
  }
  EXPECT_EQ(3U, count);
}

// ---- Why a call of the filter failed

// The records of a call of the filter with `pattern`, which fails without
// output.
std::function<void()> failingFilterFor(std::string const& pattern,
                                       std::string const& input = "a\n") {
  return [=] {
    withComponent([&](auto const&, auto const& interface) {
      Session session;
      unsigned matches = 0;
      std::string const line = "filter \"" + pattern + '"';
      EXPECT_EQ(-1, interface.useModule(&session.record, kExecute, 1, &matches,
                                        line.c_str(), input.c_str()));
      EXPECT_THAT(session.outputs, IsEmpty());
    });
  };
}

// A single record.
auto isRecordOf(std::string const& text) {
  return AllOf(StartsWith("severity 4 cli FilterCommand.cpp:"),
               EndsWith(" logReason: Filter pattern " + text + ".\n"),
               Not(ContainsRegex("\n.")));
}

TEST_F(Log, ARejectedPatternIsLoggedWithReasonAndOffset) {
  EXPECT_THAT(logOf("4", failingFilterFor("a(b")),
              isRecordOf("\"a(b\": missing closing parenthesis at offset 3"));
}

TEST_F(Log, ARejectedPatternIsNotLoggedBelowLevel4) {
  EXPECT_THAT(logOf("3", failingFilterFor("a(b")), IsEmpty());
}

// A pattern must not be able to forge records.
TEST_F(Log, ControlCharactersOfAPatternAreEscaped) {
  EXPECT_THAT(logOf("4", failingFilterFor("a\nseverity 1\x1b!2J\x7f\t(b")),
              isRecordOf("\"a\\x0Aseverity 1\\x1B!2J\\x7F\\x09(b\": missing "
                         "closing parenthesis at offset 20"));
}

TEST_F(Log, ALongPatternIsTruncated) {
  EXPECT_THAT(logOf("4", failingFilterFor(std::string(100, 'a') + "bcd(")),
              isRecordOf('"' + std::string(100, 'a') +
                         "...\": missing closing parenthesis at offset 104"));
}

TEST_F(Log, APatternThatIsTooLongIsLogged) {
  EXPECT_THAT(logOf("4", failingFilterFor(std::string(70000, 'a'))),
              isRecordOf('"' + std::string(100, 'a') +
                         "...\": pattern string is longer than the limit set "
                         "by the application at offset 0"));
}

TEST_F(Log, AMatchThatTakesTooLongIsLogged) {
  EXPECT_THAT(
      logOf("4", failingFilterFor("(?=(a+)+$)a", std::string(60, 'a') + "!\n")),
      isRecordOf("\"(?=(a+)+$)a\": matching takes too long"));
}

TEST_F(Log, NullPointersAreNotLoggedBelowLevel4) {
  EXPECT_THAT(logOf("3",
                    [] {
                      withComponent([](auto const&, auto const& interface) {
                        interface.useModule(nullptr, kExecute, 1, nullptr, "",
                                            "");
                      });
                    }),
              IsEmpty());
}

}  // namespace
}  // namespace qor_test
