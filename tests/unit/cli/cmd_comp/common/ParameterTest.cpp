#include <gtest/gtest.h>

#include "Candidates.h"
#include "Parameter.h"
#include "Refusal.h"

namespace QorCliUtilities {
namespace {

Parameter text() { return Parameter::text("<Name>", "A name"); }
Parameter number() { return Parameter::number("<n>", "A number", 3, 12); }
Parameter order() {
  return Parameter::choice("<order>", "The order", {"Up", "upside", "down"});
}

TEST(Parameter, AcceptsValidWords) {
  struct {
    Parameter parameter;
    char const* word;
    bool accepted;
  } const rows[] = {
      {{}, "", false},
      {{}, "x", false},
      {text(), "", true},
      {text(), "\"a b\"", true},
      {text(), "--x", true},
      {number(), "2", false},
      {number(), "3", true},
      {number(), "003", true},
      {number(), "12", true},
      {number(), "13", false},
      {number(), "99999999999999999999999", false},
      {number(), "", false},
      {number(), "-3", false},
      {number(), "+3", false},
      {number(), "3 ", false},
      {number(), "3x", false},
      {number(), "0x3", false},
      {Parameter::number("<n>", ""), "", true},
      {Parameter::number("<n>", ""), "0", true},
      {Parameter::number("<n>", ""), "4294967296", true},
      {order(), "up", true},
      {order(), "DOWN", true},
      {order(), "u", false},
      {order(), "upsides", false},
      {order(), "", false},
      {order(), "\"up\"", false},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(row.parameter.accepts(row.word), row.accepted) << row.word;
  }
}

TEST(Parameter, HasAValueForEachWord) {
  EXPECT_EQ(text().value("\"a b\""), "a b");
  EXPECT_EQ(text().value("Plain"), "Plain");
  EXPECT_EQ(number().value("007"), "007");
  EXPECT_EQ(order().value("UP"), "Up");
  EXPECT_EQ(order().value("Down"), "down");
}

TEST(Parameter, NamesTheInvalidWord) {
  EXPECT_EQ(number().refusal("x", "-A"),
            "Invalid value 'x' for integer parameter '-A'. Valid values are in "
            "range : [3,12]");
  EXPECT_EQ(Parameter::number("<n>", "").refusal("-1", "<n>"),
            "Invalid value '-1' for integer parameter '<n>'. Valid values are "
            "in range : [0,4294967295]");
  EXPECT_EQ(order().refusal("left", "--order"),
            "Invalid value 'left' for parameter '--order'. Valid values are: "
            "[Up,upside,down]");
}

TEST(Parameter, RejectsEmptyRangesAndChoices) {
  QorUnit::expectError("Empty range: <n>",
                       [] { Parameter::number("<n>", "", 3, 2); });
  QorUnit::expectError("Empty choice: <order>",
                       [] { Parameter::choice("<order>", "", {}); });
  QorUnit::expectError("Empty choice: <order>", [] {
    Parameter::choice("<order>", "", {"up", ""});
  });
  EXPECT_TRUE(Parameter::number("<n>", "", 3, 3).accepts("3"));
}

TEST(Parameter, IsRequiredUnlessItIsOptional) {
  EXPECT_TRUE(number().isRequired());
  Parameter const optional = number().optional();
  EXPECT_FALSE(optional.isRequired());
  EXPECT_TRUE(optional.accepts("3"));
  EXPECT_FALSE(optional.accepts("2"));
  EXPECT_EQ(optional.placeholder(), "<n>");
}

TEST(Parameter, OffersItsPlaceholderOrItsWords) {
  struct {
    Parameter parameter;
    char const* typed;
    std::vector<std::string> candidates;
  } const rows[] = {
      {text(), "", {"1 <Name> [7 <name>] A name"}},
      {number(), "5", {"1 <n> [7 <n>] A number"}},
      {order(),
       "",
       {"1 Up [1 up] The order", "1 upside [1 upside] The order",
        "1 down [1 down] The order"}},
      {order(),
       "U",
       {"1 Up [1 up] The order", "1 upside [1 upside] The order"}},
      {order(), "d", {"3 down [1 down] The order"}},
      {order(), "x", {}},
  };
  for (auto const& row : rows) {
    std::vector<AutoCompleteResult> results;
    row.parameter.offer(row.typed, QOR_CLI_TOKEN_NEXT_WORD, results);
    EXPECT_EQ(QorUnit::describe(results), row.candidates) << row.typed;
  }
}

TEST(Parameter, NumbersSaturate) {
  EXPECT_EQ(decimalNumber(""), 0U);
  EXPECT_EQ(decimalNumber("4294967295"), 4294967295U);
  EXPECT_EQ(decimalNumber("4294967296"), 4294967295U);
  EXPECT_EQ(decimalNumber(std::string(400, '9')), 4294967295U);
}

}  // namespace
}  // namespace QorCliUtilities
