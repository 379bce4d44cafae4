#include <gtest/gtest.h>

#include "ACFilterOptions.h"
#include "PipeOutput1.h"
#include "RecordingContext.h"
#include "Refusal.h"

namespace QorCliPipe {
namespace {

using QorCliUtilities::Validation_Type;
using QorUnit::expectError;
using QorUnit::Refusal;
using Tokens = std::vector<std::string>;

class FilterOptions : public ::testing::Test {
 protected:
  FilterOptions() { session.record.mode = QorCliModeEnum_1T{7}; }

  QorUnit::RecordingContext session;
  PipeOutput1 output;
  ACFilterOptions node{{7}, Validation_Type{0}, true};
};

TEST_F(FilterOptions, PassesItsArgumentsToTheNode) {
  EXPECT_TRUE(node.potentialTerminalNode());
  EXPECT_FALSE(node.isHidden());
  EXPECT_EQ(node.validationType(), Validation_Type{0});
  EXPECT_TRUE(node.isValidForMode(QorCliModeEnum_1T{7}));
  EXPECT_FALSE(node.isValidForMode(QorCliModeEnum_1T{2}));
  ACFilterOptions const strict({}, Validation_Type{3}, false);
  EXPECT_FALSE(strict.potentialTerminalNode());
  EXPECT_EQ(strict.validationType(), Validation_Type{3});
  EXPECT_FALSE(strict.isValidForMode(QorCliModeEnum_1T{7}));
}

TEST_F(FilterOptions, IsAMultiTokenNodeWithoutALastElement) {
  EXPECT_TRUE(node.isMultiTokenNode());
  EXPECT_FALSE(node.isLastMultiTokenElement(session.context));
  unsigned position = 0;
  node.isMatch(session.context, {"a"}, position, output, true);
  EXPECT_FALSE(node.isLastMultiTokenElement(session.context));
  node.resetNode(session.context);
  EXPECT_TRUE(node.isMultiTokenNode());
}

TEST_F(FilterOptions, IsNamedMultiParms) {
  EXPECT_EQ(node.toShortString(), "MultiParms");
  EXPECT_EQ(node.keyword(), "MultiParms");
  EXPECT_EQ(node.toString(), "Root");
  EXPECT_FALSE(node.isRoot());
  EXPECT_FALSE(node.isExecutable());
}

TEST_F(FilterOptions, InheritsOtherOperations) {
  EXPECT_FALSE(node.ignoreCase());
  EXPECT_FALSE(node.internalSpacesAllowed());
  EXPECT_FALSE(node.doNoAddCRCompletion(session.context, {}));
}

TEST_F(FilterOptions, RecognisesNumbers) {
  struct {
    std::string text;
    bool isNumber;
  } const rows[] = {
      {"", true},
      {"0", true},
      {"007", true},
      {"1234567890", true},
      {std::string(400, '9'), true},
      {"-1", false},
      {"+1", false},
      {"1 ", false},
      {" 1", false},
      {"1a", false},
      {"a1", false},
      {"0x1", false},
      {"1.0", false},
      {"1,0", false},
      {"/", false},
      {":", false},
      {"\xB2", false},
      {std::string("1\0", 2), false},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(ACFilterOptions::isNumber(row.text), row.isNumber) << row.text;
  }
}

TEST_F(FilterOptions, MatchesAnyToken) {
  for (char const* token : {"--bogus", "-i", "5", "", "pattern", "\"a b\""}) {
    for (bool executing : {false, true}) {
      unsigned position = 0;
      EXPECT_TRUE(
          node.isMatch(session.context, {token}, position, output, executing));
      EXPECT_EQ(position, 1U) << token;
    }
  }
  unsigned position = 1;
  EXPECT_TRUE(
      node.isMatch(session.context, {"a", "b", "c"}, position, output, true));
  EXPECT_EQ(position, 2U);
  EXPECT_TRUE(output.getOutput().empty());
}

TEST_F(FilterOptions, ARowOfItsTableHasFiveFields) {
  auto const [helpText, otherForm, name, takesValue, isLongForm] =
      ACFilterOptions::ACFilterOption{"help", "--after", "-A", true, false};
  EXPECT_EQ(helpText, "help");
  EXPECT_EQ(otherForm, "--after");
  EXPECT_EQ(name, "-A");
  EXPECT_TRUE(takesValue);
  EXPECT_FALSE(isLongForm);
}

TEST_F(FilterOptions, MatchRejectsInvalidInput) {
  Refusal const rows[] = {
      {{}, 0, 7, "isMatch action past end of token list"},
      {{}, 0, 2, "isMatch action past end of token list"},
      {{"a"}, 1, 7, "isMatch action past end of token list"},
      {{"a"}, 1, 2, "isMatch action past end of token list"},
      {{"a"}, 9, 7, "isMatch action past end of token list"},
      {{"a"}, 0, 2, "isMatch action Not valid for mode"},
      {{"a", "b"}, 1, 2, "isMatch action Not valid for mode"},
  };
  for (auto const& row : rows) {
    session.record.mode = QorCliModeEnum_1T{row.mode};
    unsigned position = row.position;
    expectError(row.text, [&] {
      node.isMatch(session.context, row.tokens, position, output, true);
    });
    EXPECT_EQ(position, row.position);
  }
}

}  // namespace
}  // namespace QorCliPipe
