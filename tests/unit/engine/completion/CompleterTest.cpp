#include <gtest/gtest.h>

#include <string>

#include "completion/Completer.h"
#include "plugins/Framework.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

// A component that offers the end of lines of known words only, and counts
// how often it is asked.
struct Offering {
  static inline std::size_t asked = 0;

  static bool knows(std::string const& line) {
    return line.find("unknown") == std::string::npos;
  }

  static QorReturnT useModule(QorCliApiContext_5* context, unsigned,
                              unsigned actionId, unsigned*,
                              char const* commandLine, char const*) {
    ++asked;
    if (!knows(commandLine)) return 0;
    return context->setAutocompleteResult(context, 0, 1, actionId,
                                          QOR_CLI_TOKEN_WORD, "<cr>", "");
  }

  Offering() {
    EXPECT_EQ(Framework::instance().registerComponent(&component), 0);
  }
  ~Offering() { Framework::instance().unregisterComponent(&component); }

  QorCliApiPipeCommandComponent_1 pipe{
      {"Offering", "QorCliApiPipeCommandComponent", "1"},
      useModule,
      [] { return "offering"; },
      [](QorCliApiContext_5*, unsigned) { return QorReturnT{0}; }};
  QorMgmtSpiInterface_1 const* provided[2]{&pipe.identity, nullptr};
  QorMgmtSpiComponent_1 component{{"Offering", "QorMgmtSpiComponent", "1"},
                                  provided,
                                  nullptr,
                                  [](QorStateChangeReason) { return 0; },
                                  [](QorStateChangeReason) { return 0; }};
};

std::string repeated(std::string const& text, std::size_t times) {
  std::string result;
  while (times-- > 0) result += text;
  return result;
}

TEST(CompleterTest, findsTheUnknownWordOfALongLineInFewQuestions) {
  constexpr std::size_t kWords = 1000;
  // Once for abbreviations, and both questions in each bisection.
  constexpr std::size_t kFew = 2 * Abbreviations::kMostWords + 2 * 11;
  Offering const offering;
  Session session(0, "", "tester");
  SourceCommands sourceCommands(session, {});
  Completer completer(session, sourceCommands);
  for (std::size_t before : {std::size_t{0}, kWords / 3, kWords}) {
    std::string const line = "a | " + repeated("x ", before) + "unknown" +
                             repeated(" y", kWords - before);
    Offering::asked = 0;
    std::string const sentence = completer.noCandidates(line);
    std::string const end = "no known word begins with \"unknown\"";
    EXPECT_EQ(sentence.substr(sentence.size() - end.size()), end);
    EXPECT_LE(Offering::asked, kFew);
  }
}

TEST(CompleterTest, makesNoTextToTellWhatMayFollowIt) {
  std::size_t made = 0;
  auto const make = [&] {
    ++made;
    return std::string();
  };
  Offering const offering;
  Session session(0, "", "tester");
  SourceCommands sourceCommands(
      session, {make, make, make, make, make,
                [](std::string const&) { return std::string(); },
                [](std::string const&) { return std::vector<std::string>(); }});
  Completer completer(session, sourceCommands);
  for (std::string const line : {"help", "show history", "show tree",
                                 "show tree --dot", "show version"}) {
    EXPECT_TRUE(Candidates::offerReturn(completer.help(line))) << line;
    completer.help(line + " | x");
    EXPECT_EQ(made, 0U) << line;
  }
}

TEST(CompleterTest, helpEndsOnlyBehindACommand) {
  Offering const offering;
  Session session(0, "", "tester");
  SourceCommands::Texts texts;
  texts.commandHelp = [](std::string const& command) {
    return command == "echo" ? command : throw SourceFailure("none");
  };
  texts.commandNames = [](std::string const&) {
    return std::vector<std::string>();
  };
  SourceCommands sourceCommands(session, texts);
  Completer completer(session, sourceCommands);
  EXPECT_TRUE(Candidates::offerReturn(completer.help("help echo ")));
  EXPECT_FALSE(Candidates::offerReturn(completer.help("help bogus ")));
  EXPECT_FALSE(Candidates::offerReturn(completer.complete("help bogus ")));
}

}  // namespace
}  // namespace QorCliEngine
