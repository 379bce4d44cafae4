#include <gtest/gtest.h>

#include "ACKeyword.h"
#include "ACPipeKeyword.h"
#include "Candidates.h"
#include "PipeOutput1.h"
#include "RecordingContext.h"
#include "Refusal.h"

namespace QorCliUtilities {
namespace {

using Tokens = std::vector<std::string>;
using QorUnit::expectError;
using QorUnit::RecordingContext;
using QorUnit::Refusal;

constexpr QorCliModeEnum_1T kOther{2};

// The constructor's arguments.
struct KeywordSetup {
  char const* keyword = "show";
  std::set<unsigned> modes = {QOR_CLI_MODE_ANY};
  bool hidden = false;
  QorCliCompletionToken_1T token{0};
  bool split = false;
  bool offerWhenEmpty = false;
  bool variant = false;
  bool requiresCursor = false;
  bool forbidsCursor = false;
};

template <class Keyword = ACKeyword>
Keyword make(KeywordSetup const& s) {
  return {s.keyword, "Help",           s.modes,        false,
          s.hidden,  s.token,          s.split,        s.offerWhenEmpty,
          s.variant, s.requiresCursor, s.forbidsCursor};
}

KeywordSetup split(char const* keyword) {
  KeywordSetup setup;
  setup.keyword = keyword;
  setup.split = true;
  return setup;
}

class Keyword : public ::testing::Test {
 protected:
  bool matches(ACKeyword& node, Tokens const& tokens, bool executing = true) {
    return node.isMatch(session.context, tokens, position, output, executing);
  }

  std::vector<std::string> offered(ACKeyword& node, Tokens const& tokens,
                                   unsigned at, bool help = false) {
    position = at;
    std::vector<AutoCompleteResult> results;
    EXPECT_EQ(node.autoComplete(session.context, tokens, "", position, false,
                                help, results, output),
              0);
    return QorUnit::describe(results);
  }

  RecordingContext session;
  QorCliPipe::PipeOutput1 output;
  unsigned position = 0;
};

TEST_F(Keyword, StoresLowerCase) {
  KeywordSetup setup;
  setup.keyword = "ShoW";
  ACKeyword const node = make(setup);
  EXPECT_EQ(node.keyword(), "show");
  EXPECT_EQ(node.toString(), "show");
  EXPECT_EQ(node.toShortString(), "show");
  EXPECT_EQ(node.helpText(QOR_CLI_MODE_EXEC), "Help");
  EXPECT_EQ(node.helpText(kOther), "Help");
  EXPECT_TRUE(node.ignoreCase());
  EXPECT_EQ(node.validationType(), Validation_Type{3});
  EXPECT_FALSE(node.isMultiTokenNode());
  EXPECT_FALSE(node.internalSpacesAllowed());
  EXPECT_FALSE(node.doNoAddCRCompletion(session.context, {}));
}

TEST_F(Keyword, PassesItsFlagsToTheNode) {
  for (bool flag : {false, true}) {
    ACKeyword const node("a", "", {7}, flag, !flag, QOR_CLI_TOKEN_OPTION, false,
                         false, false, false, false);
    EXPECT_EQ(node.potentialTerminalNode(), flag);
    EXPECT_EQ(node.isHidden(), !flag);
    EXPECT_TRUE(node.isValidForMode(QorCliModeEnum_1T{7}));
    EXPECT_FALSE(node.isValidForMode(kOther));
  }
}

TEST_F(Keyword, RecognisesAGhostCursor) {
  EXPECT_TRUE(ACKeyword::isGhost(nullptr));
  EXPECT_TRUE(ACKeyword::isGhost(""));
  EXPECT_FALSE(ACKeyword::isGhost(" "));
  EXPECT_FALSE(ACKeyword::isGhost("a=1"));
}

TEST_F(Keyword, MatchesTheWholeWordInAnyCase) {
  struct {
    char const* word;
    bool matches;
  } const rows[] = {{"show", true},   {"SHOW", true}, {"Show", true},
                    {"sho", false},   {"", false},    {"shows", false},
                    {" show", false}, {"hide", false}};
  KeywordSetup setup;
  setup.keyword = "Show";
  ACKeyword node = make(setup);
  for (auto const& row : rows) {
    for (bool executing : {false, true}) {
      position = 1;
      EXPECT_EQ(matches(node, {"x", row.word, "y"}, executing), row.matches)
          << row.word;
      EXPECT_EQ(position, 2U) << row.word;
    }
  }
}

TEST_F(Keyword, MatchesOneOfItsAlternatives) {
  struct {
    char const* keyword;
    char const* word;
    bool matches;
  } const rows[] = {
      {"a | b", "a", true},     {"a | b", "B", true},
      {"A | b", "a", true},     {"a | b", "a | b", false},
      {"a | b", "", false},     {"a||b", "", true},
      {"a|b", "c", false},      {"  -i|--ignore ", "--IGNORE", true},
      {"a b | c", "a b", true}, {"ab | c", "a", false},
      {"", "", false},
  };
  for (auto const& row : rows) {
    ACKeyword node = make(split(row.keyword));
    position = 0;
    EXPECT_EQ(matches(node, {row.word}), row.matches)
        << row.keyword << ": " << row.word;
    EXPECT_EQ(position, 1U);
  }
}

TEST_F(Keyword, KeepsABarInTheWordUnlessSplitting) {
  KeywordSetup setup;
  setup.keyword = "a|b";
  ACKeyword node = make(setup);
  EXPECT_TRUE(matches(node, {"a|b"}));
  position = 0;
  EXPECT_FALSE(matches(node, {"a"}));
}

TEST_F(Keyword, ConsumesNoWordInExecutionWithoutValidation) {
  ACKeyword node = make({});
  node.setValidationType(VALIDATION_NONE);
  EXPECT_TRUE(matches(node, {"other"}, true));
  EXPECT_EQ(position, 0U);
  EXPECT_FALSE(matches(node, {"other"}, false));
  EXPECT_EQ(position, 1U);
}

TEST_F(Keyword, ExistsOnlyForItsCursor) {
  struct {
    bool required;
    bool forbidden;
    char const* cursor;
    bool exists;
  } const rows[] = {
      {true, false, nullptr, false}, {true, false, "", false},
      {true, false, "a=1", true},    {false, true, nullptr, true},
      {false, true, "", true},       {false, true, "a=1", false},
      {true, true, "", false},       {true, true, "a=1", false},
      {false, false, "a=1", true},   {false, false, nullptr, true},
  };
  for (auto const& row : rows) {
    KeywordSetup setup;
    setup.requiresCursor = row.required;
    setup.forbidsCursor = row.forbidden;
    ACKeyword node = make(setup);
    session.record.cursor = row.cursor;
    position = 0;
    EXPECT_EQ(matches(node, {"show"}), row.exists);
    EXPECT_EQ(position, row.exists ? 1U : 0U);
    node.setValidationType(VALIDATION_NONE);
    position = 0;
    EXPECT_EQ(matches(node, {"show"}), row.exists);
    EXPECT_EQ(offered(node, {"show"}, 0).size(), row.exists ? 1U : 0U);
  }
}

TEST_F(Keyword, MatchRejectsInvalidInput) {
  KeywordSetup setup;
  setup.modes = {7};
  ACKeyword node = make(setup);
  Refusal const rows[] = {
      {{}, 0, 7, "isMatch keyword past end of token list"},
      {{"show"}, 1, 7, "isMatch keyword past end of token list"},
      {{"show"}, 9, 7, "isMatch keyword past end of token list"},
      {{"show"}, 1, 2, "isMatch keyword past end of token list"},
      {{"show"}, 0, 2, "isMatch keyword not valid for mode"},
  };
  for (auto const& row : rows) {
    session.record.mode = QorCliModeEnum_1T{row.mode};
    position = row.position;
    expectError(row.text, [&] { matches(node, row.tokens); });
    EXPECT_EQ(position, row.position);
  }
}

TEST_F(Keyword, CompletionRejectsInvalidInput) {
  KeywordSetup setup;
  setup.modes = {7};
  ACKeyword node = make(setup);
  Refusal const rows[] = {
      {{}, 1, 7, "Autocomplete keyword past end of token list"},
      {{"a"}, 2, 7, "Autocomplete keyword past end of token list"},
      {{"a"}, 2, 2, "Autocomplete keyword past end of token list"},
      {{"a", "b"}, 0, 7, "Autocomplete keyword called on intermediate node"},
      {{"a", "b", "c"},
       1,
       2,
       "Autocomplete keyword called on intermediate node"},
      {{"a"}, 0, 2, "Autocomplete keyword not valid for mode"},
      {{"a"}, 1, 2, "Autocomplete keyword not valid for mode"},
      {{}, 0, 2, "Autocomplete keyword not valid for mode"},
  };
  for (auto const& row : rows) {
    session.record.mode = QorCliModeEnum_1T{row.mode};
    expectError(row.text, [&] { offered(node, row.tokens, row.position); });
  }
  session.record.mode = QorCliModeEnum_1T{7};
  EXPECT_NO_THROW(offered(node, {}, 0));
  EXPECT_NO_THROW(offered(node, {"a", "b"}, 1));
  EXPECT_NO_THROW(offered(node, {"a", "b"}, 2));
}

TEST_F(Keyword, OffersItselfForAPrefix) {
  ACKeyword node = make({});
  std::string const rest = " show [6 show] () Help\nType: Command";
  EXPECT_EQ(offered(node, {"SH"}, 0), Tokens{"3" + rest});
  EXPECT_EQ(position, 1U);
  EXPECT_EQ(offered(node, {"x", "show"}, 1), Tokens{"3" + rest});
  EXPECT_EQ(offered(node, {"x"}, 1), Tokens{"5" + rest});
  EXPECT_EQ(position, 2U);
  EXPECT_EQ(offered(node, {"showx"}, 0), Tokens{});
  EXPECT_EQ(offered(node, {"hide"}, 0), Tokens{});
}

TEST_F(Keyword, OffersNothingWhileHidden) {
  for (char const* keyword : {"show", "-s"}) {
    KeywordSetup setup = split(keyword);
    setup.split = *keyword == '-';
    setup.hidden = true;
    ACKeyword node = make(setup);
    EXPECT_EQ(offered(node, {keyword}, 0), Tokens{});
    node.unsetHidden();
    EXPECT_EQ(offered(node, {keyword}, 0).size(), 1U);
  }
}

// The keyword's own kind only matters if it is 2, and only for option-like
// spellings.
TEST_F(Keyword, PassesItsKindToOptionsOnly) {
  for (unsigned kind = 0; kind < 8; ++kind) {
    KeywordSetup plain;
    plain.token = QorCliCompletionToken_1T{kind};
    ACKeyword plainNode = make(plain);
    EXPECT_EQ(offered(plainNode, {"s"}, 0)[0].substr(0, 2), "3 ");

    KeywordSetup variant = plain;
    variant.variant = true;
    KeywordSetup alternatives = variant;
    alternatives.keyword = "-s";
    alternatives.split = true;
    for (KeywordSetup const& setup : {variant, alternatives}) {
      ACKeyword node = make(setup);
      EXPECT_EQ(offered(node, {*setup.keyword == '-' ? "-" : "s"}, 0)[0][0],
                kind == 2 ? '2' : '3');
      EXPECT_EQ(offered(node, {"x"}, 1)[0][0], kind == 2 ? '2' : '5');
    }
  }
}

TEST_F(Keyword, OffersOnlyAlternativesThatAreOptions) {
  ACKeyword node = make(split("Ignore | --IGNORE | -i || -v"));
  EXPECT_EQ(offered(node, {"x"}, 1),
            (Tokens{"5 --ignore [1 --ignore] Help", "5 -i [1 -i] Help",
                    "5 -v [1 -v] Help"}));
  EXPECT_EQ(offered(node, {"x", "-I"}, 1), Tokens{"3 -i [1 -i] Help"});
  EXPECT_EQ(offered(node, {"x", "ign"}, 1), Tokens{});
}

TEST_F(Keyword, OffersAVariantAsAnOption) {
  KeywordSetup setup;
  setup.variant = true;
  ACKeyword node = make(setup);
  EXPECT_EQ(offered(node, {"sh"}, 0), Tokens{"3 show [1 show] Help"});
  EXPECT_EQ(offered(node, {"x"}, 1), Tokens{"5 show [1 show] Help"});
  EXPECT_EQ(offered(node, {"x", "y"}, 1), Tokens{});
}

TEST_F(Keyword, OffersItselfForAnEmptyFirstWord) {
  KeywordSetup plain;
  KeywordSetup offering;
  offering.offerWhenEmpty = true;
  KeywordSetup variant;
  variant.variant = true;
  KeywordSetup offeringVariant = offering;
  offeringVariant.variant = true;
  KeywordSetup alternative = split("-s");
  alternative.offerWhenEmpty = true;
  struct {
    KeywordSetup setup;
    bool completed;
    bool helped;
  } const rows[] = {{plain, false, false},
                    {offering, true, true},
                    {variant, false, true},
                    {offeringVariant, false, true},
                    {alternative, false, true}};
  for (auto const& row : rows) {
    ACKeyword node = make(row.setup);
    for (Tokens const& line : {Tokens{}, Tokens{""}}) {
      session.record.mode = kOther;
      EXPECT_EQ(!offered(node, line, 0).empty(), row.completed);
      EXPECT_EQ(!offered(node, line, 0, true).empty(), row.helped);
      session.record.mode = QOR_CLI_MODE_EXEC;
      EXPECT_FALSE(offered(node, line, 0).empty());
      EXPECT_FALSE(offered(node, line, 0, true).empty());
    }
    session.record.mode = kOther;
    EXPECT_FALSE(offered(node, {"x"}, 1).empty());
    EXPECT_FALSE(offered(node, {"x", ""}, 1).empty());
  }
}

TEST_F(Keyword, AnEmptyFirstWordFollowsTheLine) {
  KeywordSetup setup;
  setup.offerWhenEmpty = true;
  ACKeyword node = make(setup);
  EXPECT_EQ(offered(node, {}, 0),
            Tokens{"5 show [6 show] () Help\nType: Command"});
}

TEST_F(Keyword, APipeKeywordIsAlwaysOfferedFirst) {
  for (unsigned kind = 0; kind < 8; ++kind) {
    KeywordSetup setup;
    setup.token = QorCliCompletionToken_1T{kind};
    auto node = make<ACPipeKeyword>(setup);
    EXPECT_EQ(offered(node, {}, 0),
              Tokens{"5 show [6 show] () Help\nType: Command"});

    // A variant would pass on the kind 2.
    setup.variant = true;
    auto variant = make<ACPipeKeyword>(setup);
    EXPECT_EQ(offered(variant, {"s"}, 0), Tokens{"3 show [1 show] Help"});
  }
}

TEST_F(Keyword, APipeKeywordKeepsItsOtherArguments) {
  ACPipeKeyword node("-A|-b", "Help", {7}, true, true, QOR_CLI_TOKEN_OPTION,
                     true, false, false, false, true);
  session.record.mode = QorCliModeEnum_1T{7};
  EXPECT_EQ(node.keyword(), "-a|-b");
  EXPECT_TRUE(node.potentialTerminalNode());
  EXPECT_TRUE(node.isHidden());
  EXPECT_FALSE(node.isValidForMode(kOther));
  EXPECT_TRUE(matches(node, {"-B"}));
  session.record.cursor = "a=1";
  position = 0;
  EXPECT_FALSE(matches(node, {"-B"}));
  ACPipeKeyword bound("a", "Help", {7}, true, true, QOR_CLI_TOKEN_OPTION, false,
                      false, false, true, false);
  EXPECT_TRUE(matches(bound, {"a"}));
  session.record.cursor = nullptr;
  position = 0;
  EXPECT_FALSE(matches(bound, {"a"}));
}

TEST_F(Keyword, SettingsCorrespondToArguments) {
  KeywordSettings settings{"Show|-s", "Help", {7}};
  EXPECT_EQ(settings.completionToken, QOR_CLI_TOKEN_WORD);
  ACKeyword const plain(settings);
  EXPECT_EQ(plain.keyword(), "show|-s");
  EXPECT_EQ(plain.helpText(kOther), "Help");
  EXPECT_TRUE(plain.isValidForMode(QorCliModeEnum_1T{7}));
  EXPECT_FALSE(plain.isValidForMode(kOther));
  EXPECT_FALSE(plain.potentialTerminalNode());
  EXPECT_FALSE(plain.isHidden());
  settings.modes = {QOR_CLI_MODE_ANY};
  settings.potentialTerminalNode = true;
  settings.splitAlternatives = true;
  settings.completionToken = QOR_CLI_TOKEN_OPTION;
  ACKeyword option(settings);
  EXPECT_TRUE(option.potentialTerminalNode());
  EXPECT_TRUE(matches(option, {"-s"}));
  EXPECT_EQ(offered(option, {"x", "y", "-"}, 2),
            (std::vector<std::string>{"2 -s [1 -s] Help"}));
  settings.hidden = true;
  EXPECT_TRUE(ACKeyword(settings).isHidden());
}

TEST_F(Keyword, AppliesEachSetting) {
  KeywordSettings const plain{"show", "Help"};
  struct {
    bool KeywordSettings::*setting;
    bool value;
    std::vector<std::string> first;   // offered as an empty first word
    std::vector<std::string> second;  // after two words
  } const rows[] = {
      {&KeywordSettings::offerWhenEmpty,
       true,
       {"5 show [6 show] () Help\nType: Command"},
       {"5 show [6 show] () Help\nType: Command"}},
      {&KeywordSettings::offerWhenEmpty,
       false,
       {},
       {"5 show [6 show] () Help\nType: Command"}},
      {&KeywordSettings::variantCompletion, true, {}, {"5 show [1 show] Help"}},
      {&KeywordSettings::requiresCursor, true, {}, {}},
      {&KeywordSettings::forbidsCursor,
       true,
       {"5 show [6 show] () Help\nType: Command"},
       {"5 show [6 show] () Help\nType: Command"}},
  };
  for (auto const& row : rows) {
    KeywordSettings settings = plain;
    settings.*row.setting = row.value;
    ACKeyword node(settings);
    EXPECT_EQ(offered(node, {}, 0), row.first);
    EXPECT_EQ(offered(node, {"x", "y"}, 2), row.second);
  }
  session.record.cursor = "here";
  KeywordSettings elsewhere = plain;
  elsewhere.forbidsCursor = true;
  ACKeyword node(elsewhere);
  EXPECT_EQ(offered(node, {}, 0), (std::vector<std::string>{}));
}

TEST_F(Keyword, SettingsOfAPipeKeyword) {
  KeywordSettings settings{"show", "Help"};
  settings.offerWhenEmpty = false;
  ACPipeKeyword node(settings);
  EXPECT_EQ(node.keyword(), "show");
  EXPECT_EQ(
      offered(node, {}, 0),
      (std::vector<std::string>{"5 show [6 show] () Help\nType: Command"}));
}

}  // namespace
}  // namespace QorCliUtilities
