#include <gtest/gtest.h>

#include "Error.h"
#include "Grammar.h"
#include "Refusal.h"

namespace QorCliUtilities {
namespace {

using Kind = Problem::Kind;
using Tokens = std::vector<std::string>;

// sort [-r] [--key N] [-O up|down] [-T TEXT] PATTERN [N]
Grammar const& sort() {
  static Grammar const grammar(
      {{"-r", "--reverse", "The other way round"},
       {"", "--key", "By a field", Parameter::number("<field>", "", 1, 9)},
       {"-O", "--Order", "In an order",
        Parameter::choice("<order>", "", {"up", "down"})},
       {"-T", "", "With a text", Parameter::text("<text>", "")}},
      {Parameter::text("<Pattern>", ""),
       Parameter::number("<n>", "", 0, 100).optional()});
  return grammar;
}

// The result of parse() as "r key=3 O=up T=x P=a n=5", or the problem.
std::string parsed(Tokens tokens) {
  tokens.insert(tokens.begin(), "sort");
  Arguments typed;
  if (Problem const problem = sort().parse(tokens, typed)) return problem.text;
  std::string result = typed.has("-R") ? "r " : "";
  if (typed.has("--key")) result += "key=" + typed.text("--key") + ' ';
  if (typed.has("-o")) result += "O=" + typed.text("--order") + ' ';
  if (typed.has("-T")) result += "T=" + typed.text("-t") + ' ';
  result += "P=" + typed.text("<pattern>");
  if (typed.has("<n>")) result += " n=" + std::to_string(typed.number("<n>"));
  return result;
}

TEST(Grammar, ParsesOptionsInAnyOrder) {
  struct {
    Tokens tokens;
    char const* result;
  } const rows[] = {
      {{"a"}, "P=a"},
      {{"\"a b\""}, "P=a b"},
      {{"\"\""}, "P="},
      {{"-"}, "P=-"},
      {{"a", "5"}, "P=a n=5"},
      {{"5", "007"}, "P=5 n=7"},
      {{"-r", "a"}, "r P=a"},
      {{"a", "-r"}, "r P=a"},
      {{"a", "--REVERSE", "5"}, "r P=a n=5"},
      {{"-r", "-R", "a"}, "r P=a"},
      {{"--key", "3", "-o", "UP", "-t", "\"x y\"", "-r", "a"},
       "r key=3 O=up T=x y P=a"},
      {{"-r", "a", "-T", "x", "--order", "down", "--KEY", "9", "0"},
       "r key=9 O=down T=x P=a n=0"},
      {{"--key", "3", "--key", "4", "a"}, "key=4 P=a"},
      {{"-T", "-r", "a"}, "T=-r P=a"},
      {{"-T", "--bogus", "a"}, "T=--bogus P=a"},
  };
  for (auto const& row : rows) EXPECT_EQ(parsed(row.tokens), row.result);
}

TEST(Grammar, NamesTheInvalidWord) {
  constexpr char kKey[] =
      "' for integer parameter '--KEY'. Valid values are in range : [1,9]";
  struct {
    Tokens tokens;
    std::string problem;
  } const rows[] = {
      {{}, "Missing <Pattern>"},
      {{"-r"}, "Missing <Pattern>"},
      {{"--key", "3"}, "Missing <Pattern>"},
      {{"-x", "a"}, "Unknown option '-x'"},
      {{"a", "--revers"}, "Unknown option '--revers'"},
      {{"\"-x\""}, "Unknown option '\"-x\"'"},
      {{"\"-\""}, "Unknown option '\"-\"'"},
      {{"-r=1", "a"}, "Unknown option '-r=1'"},
      {{"a", "5", "b"}, "Unexpected word 'b'"},
      {{"a", "5", "-"}, "Unexpected word '-'"},
      {{"a", "x"},
       "Invalid value 'x' for integer parameter '<n>'. Valid values are in "
       "range : [0,100]"},
      {{"a", "101"},
       "Invalid value '101' for integer parameter '<n>'. Valid values are in "
       "range : [0,100]"},
      {{"--KEY", "0", "a"}, "Invalid value '0" + std::string(kKey)},
      {{"--KEY", "-r", "a"}, "Invalid value '-r" + std::string(kKey)},
      {{"-o", "left", "a"},
       "Invalid value 'left' for parameter '-o'. Valid values are: [up,down]"},
      {{"a", "--key"}, "Missing value after '--key'"},
      {{"-T"}, "Missing value after '-T'"},
      // The first problem is reported.
      {{"-x", "--key", "0"}, "Unknown option '-x'"},
      {{"-x", "--key"}, "Unknown option '-x'"},
  };
  for (auto const& row : rows) EXPECT_EQ(parsed(row.tokens), row.problem);
}

TEST(Grammar, DistinguishesKindsOfProblems) {
  struct {
    Tokens tokens;
    Kind kind;
  } const rows[] = {
      {{"sort", "a"}, Kind::kNone},
      {{}, Kind::kMissingArgument},
      {{"sort"}, Kind::kMissingArgument},
      {{"sort", "--x"}, Kind::kUnknownOption},
      {{"sort", "a", "1", "2"}, Kind::kUnexpectedWord},
      {{"sort", "a", "b"}, Kind::kInvalidValue},
      {{"sort", "a", "-t"}, Kind::kMissingValue},
  };
  for (auto const& row : rows) {
    Arguments typed;
    Problem const problem = sort().parse(row.tokens, typed);
    EXPECT_EQ(problem.kind, row.kind) << problem.text;
    EXPECT_EQ(static_cast<bool>(problem), row.kind != Kind::kNone);
    EXPECT_EQ(problem.text.empty(), row.kind == Kind::kNone);
  }
}

TEST(Grammar, OmittedParametersHaveDefaults) {
  Arguments typed;
  EXPECT_FALSE(sort().parse({"sort", "a"}, typed));
  EXPECT_FALSE(typed.has("-r"));
  EXPECT_EQ(typed.text("-T"), "");
  EXPECT_EQ(typed.text("-T", "other"), "other");
  EXPECT_EQ(typed.number("<n>"), 0U);
  EXPECT_EQ(typed.number("<N>", 7), 7U);
  EXPECT_FALSE(sort().parse({"sort", "-r", "a", "9"}, typed));
  EXPECT_TRUE(typed.has("--Reverse"));
  EXPECT_EQ(typed.text("-r", "other"), "");
  EXPECT_EQ(typed.number("<n>", 7), 9U);
}

TEST(Grammar, NumbersConsistOfDigits) {
  Arguments typed;
  EXPECT_FALSE(sort().parse({"sort", "-o", "up", "-T", "12", "3x"}, typed));
  EXPECT_EQ(typed.number("-T"), 12U);
  QorUnit::expectError("Not a number: 3x", [&] { typed.number("<pattern>"); });
  QorUnit::expectError("Not a number: up", [&] { typed.number("-o"); });
}

TEST(Grammar, RejectsUnknownNames) {
  Arguments typed;
  EXPECT_FALSE(sort().parse({"sort", "a"}, typed));
  for (char const* name : {"-x", "", "pattern", "--o"}) {
    QorUnit::expectError(("No such parameter: " + std::string(name)).c_str(),
                         [&] { typed.has(name); });
  }
}

TEST(Grammar, TheKeywordAloneMayBeValid) {
  EXPECT_FALSE(sort().allowsNoWord());
  EXPECT_TRUE(Grammar({}, {}).allowsNoWord());
  EXPECT_TRUE(
      Grammar({}, {Parameter::text("<a>", "").optional()}).allowsNoWord());
}

TEST(Grammar, HasAFormForEachSpelling) {
  std::string forms;
  for (auto const& [key, form] : sort().forms()) {
    forms += key + ':' + form.name + ':' + form.otherForm +
             (form.takesValue ? ":value" : "") +
             (form.isLongForm ? ":long " : " ");
  }
  EXPECT_EQ(forms,
            "--key:--key::value:long --order:--Order:-o:value:long "
            "--reverse:--reverse:-r:long -o:-O:--order:value "
            "-r:-r:--reverse -t:-T::value ");
  EXPECT_EQ(sort().formNamed("-O"), sort().formNamed("-o"));
  EXPECT_NE(sort().formNamed("-o"), sort().formNamed("--order"));
  EXPECT_EQ(sort().optionNamed("-o"), sort().optionNamed("--ORDER"));
  EXPECT_EQ(sort().optionNamed("-O")->longForm, "--Order");
  for (char const* word : {"-x", ""}) {
    EXPECT_EQ(sort().formNamed(word), nullptr);
    EXPECT_EQ(sort().optionNamed(word), nullptr);
  }
}

TEST(Grammar, RejectsAnInvalidTable) {
  Parameter const a = Parameter::text("<a>", "");
  Parameter const b = Parameter::text("<b>", "");
  struct {
    std::vector<Option> options;
    std::vector<Parameter> arguments;
    char const* error;
  } const rows[] = {
      {{{"", "", ""}}, {}, "An option has no form"},
      {{{"a", "", ""}}, {}, "Not a short form of an option: a"},
      {{{"-", "", ""}}, {}, "Not a short form of an option: -"},
      {{{"--a", "", ""}}, {}, "Not a short form of an option: --a"},
      {{{"", "a", ""}}, {}, "Not a long form of an option: a"},
      {{{"", "-a", ""}}, {}, "Not a long form of an option: -a"},
      {{{"", "--", ""}}, {}, "Not a long form of an option: --"},
      {{{"-a", "", ""}, {"-A", "", ""}}, {}, "Two options have the form -A"},
      {{{"-a", "--x", ""}, {"-b", "--X", ""}},
       {},
       "Two options have the form --X"},
      {{}, {Parameter()}, "An argument is an empty parameter"},
      {{},
       {a.optional(), b},
       "The required argument <b> follows an optional one"},
      {{}, {a, Parameter::text("<A>", "")}, "Two arguments are named <A>"},
  };
  for (auto const& row : rows) {
    QorUnit::expectError(row.error,
                         [&] { Grammar(row.options, row.arguments); });
  }
  EXPECT_NO_THROW(
      Grammar({{"-a", "", ""}, {"", "--a", ""}}, {a, b.optional()}));
}

TEST(Grammar, AWordThatLooksLikeAnOption) {
  for (char const* word : {"-a", "--", "-5", "\"-\"", "\"-a b\""}) {
    EXPECT_TRUE(looksLikeOption(word)) << word;
  }
  for (char const* word : {"", "-", "a", "a-b", "\"\"", "\"a -b\""}) {
    EXPECT_FALSE(looksLikeOption(word)) << word;
  }
}

}  // namespace
}  // namespace QorCliUtilities
