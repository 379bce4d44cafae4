#include <gtest/gtest.h>

#include <cctype>
#include <cstring>

#include "AutoCompleteTree.h"
#include "PipeOutput1.h"
#include "Tokenizer.h"

namespace QorCliUtilities {
namespace {

using Tokens = std::vector<std::string>;

struct Row {
  std::string line;
  bool valid;
  Tokens tokens;
};

void expectTokens(Row const& row) {
  SCOPED_TRACE("line '" + row.line + "'");
  AutoCompleteTree const tree;
  QorCliPipe::PipeOutput1 output;
  Tokens tokens;
  EXPECT_EQ(tree.tokenize(row.line, tokens, output), row.valid);
  EXPECT_EQ(tokens, row.tokens);
  EXPECT_TRUE(output.getOutput().empty());
}

TEST(Tokenizer, SplitsALineAtWhiteSpace) {
  Row const rows[] = {
      {"", true, {}},
      {" ", true, {}},
      {" \t\r\n\v\f ", true, {}},
      {"a", true, {"a"}},
      {"ab cd", true, {"ab", "cd"}},
      {"  ab   cd  ", true, {"ab", "cd"}},
      {"ab\tcd\nef\r\ngh", true, {"ab", "cd", "ef", "gh"}},
      {"a b", true, {"a", "b"}},
      {"ab c", true, {"ab", "c"}},
      {"--after 5 -i", true, {"--after", "5", "-i"}},
      {"\xC3\xA4 \xE2\x82\xAC", true, {"\xC3\xA4", "\xE2\x82\xAC"}},
  };
  for (Row const& row : rows) expectTokens(row);
}

TEST(Tokenizer, RemovesWhiteSpaceAroundPunctuation) {
  Row const rows[] = {
      {"a = b", true, {"a=b"}},
      {"a= b", true, {"a=b"}},
      {"a \t=\n b", true, {"a=b"}},
      {"a , b", true, {"a,b"}},
      {"x [ 1 , 2 ]", true, {"x[1,2]"}},
      {"x [1] y", true, {"x[1]y"}},
      {"a = b c , d", true, {"a=b", "c,d"}},
      {"a = = b", true, {"a==b"}},
      {"x [ 1 ] , y [ 2 ] = a = b , c", true, {"x[1],y[2]=a=b,c"}},
      {"= a", true, {"=a"}},
      {"a =", true, {"a="}},
      {"a ( b ) { c }", true, {"a", "(", "b", ")", "{", "c", "}"}},
  };
  for (Row const& row : rows) expectTokens(row);
}

TEST(Tokenizer, KeepsQuotedTextWhole) {
  Row const rows[] = {
      {R"("a b")", true, {R"("a b")"}},
      {R"("")", true, {R"("")"}},
      {R"(say "a b" c)", true, {"say", R"("a b")", "c"}},
      {R"(a "b = c")", true, {"a", R"("b = c")"}},
      {R"("b = c" d = e "f , g" h = i)",
       true,
       {R"("b = c")", "d=e", R"("f , g")", "h=i"}},
      {R"(say "a \" b")", true, {"say", R"("a \" b")"}},
      // Without another quote, an escaped quote ends the text.
      {R"(say "a \\" b)", true, {"say", R"("a \\")", "b"}},
      {R"(say "a \" b)", true, {"say", R"("a \")", "b"}},
      {"say \"a\n b\"", true, {"say", "\"a\n b\""}},
      {R"(key="v")", true, {R"(key="v")"}},
      {R"(key = "v")", true, {R"(key="v")"}},
      {R"(set name = "a b" , x [ 1 , 2 ])",
       true,
       {"set", R"(name="a b",x[1,2])"}},
      {R"(x [ "a" , "b" ])", true, {R"(x["a","b"])"}},
      {R"(f("a"))", true, {R"(f("a"))"}},
      {R"(a="b")", true, {R"(a="b")"}},
      {R"("a" "b")", true, {R"("a")", R"("b")"}},
  };
  for (Row const& row : rows) expectTokens(row);
}

TEST(Tokenizer, ExtendsAnOpenQuoteToTheEndOfTheLine) {
  Row const rows[] = {
      {"say \"open = end", true, {"say", "\"open=end"}},
      {"\"", true, {"\""}},
      {"x\"unterminated rest", true, {"x\"unterminated rest"}},
      {R"("a b" "open  end)", true, {R"("a b")", "\"open  end"}},
  };
  for (Row const& row : rows) expectTokens(row);
}

TEST(Tokenizer, RejectsQuotedTextGluedToOtherText) {
  Row const rows[] = {
      {R"(abc"def")", false, {}},
      {R"(a="b"c)", false, {}},
      {R"(a"b c"d)", false, {}},
      {R"("a""b")", false, {}},
      {R"("a"b)", false, {}},
      {R"("a"=b)", false, {}},
      {R"("a"[1])", false, {}},
      {"say \"a\"\tb", false, {"say"}},
      {R"(one two abc"def" three)", false, {"one", "two"}},
  };
  for (Row const& row : rows) expectTokens(row);
}

TEST(Tokenizer, AppendsToExistingTokens) {
  AutoCompleteTree const tree;
  QorCliPipe::PipeOutput1 output;
  Tokens tokens{"old"};
  EXPECT_TRUE(tree.tokenize("new", tokens, output));
  EXPECT_FALSE(tree.tokenize("kept bad\"q\"", tokens, output));
  EXPECT_EQ(tokens, (Tokens{"old", "new", "kept"}));
}

TEST(Tokenizer, ReportsWhereATokenIsInvalid) {
  constexpr unsigned kUntouched = 99;
  struct {
    std::string line;
    unsigned offset;
    unsigned length;
    bool valid;
    unsigned errorPosition;
  } const rows[] = {
      {"abc", 0, 3, true, kUntouched},
      {R"(abc"def")", 0, 8, false, 2},
      {R"(a="b"c)", 0, 6, false, 5},
      {R"(a="b")", 0, 5, true, kUntouched},
      {R"(f("a"))", 0, 6, true, kUntouched},
      {R"(x="a",y="b"c)", 0, 12, false, 11},
      {R"(x="a",y"b")", 0, 10, false, 6},
      {R"(abc "x"y)", 0, 3, true, kUntouched},  // the quotes are beyond
      {R"(abc "x"y)", 4, 4, false, 7},
      {R"(abc"x" y)", 3, 3, false, 2},  // checks before the token
      {R"("a" "b"c)", 0, 3, true, kUntouched},
      {R"("ab)", 0, 3, true, kUntouched},
      {R"("a"b)", 4, 1, true, kUntouched},  // there is no token
      {R"("a"b)", 9, 4, true, kUntouched},
  };
  for (auto const& row : rows) {
    unsigned errorPosition = kUntouched;
    EXPECT_EQ(AutoCompleteTree().validateToken(row.line, row.offset, row.length,
                                               errorPosition),
              row.valid)
        << row.line;
    EXPECT_EQ(errorPosition, row.errorPosition) << row.line;
  }
}

// Every byte but the quote itself, before and after quoted text.
TEST(Tokenizer, AcceptsOnlySomeCharactersBesideQuotes) {
  for (int value = 0; value < 256; ++value) {
    char const c = static_cast<char>(value);
    if (c == '"') continue;
    bool const before = value != 0 && std::strchr("=[,()> \t\n\v\f\r", c);
    bool const after = value != 0 && std::strchr(" ,(])", c);
    unsigned errorPosition = 99;
    EXPECT_EQ(AutoCompleteTree().validateToken(std::string(1, c) + R"("q")", 0,
                                               4, errorPosition),
              before)
        << value;
    EXPECT_EQ(errorPosition, before ? 99U : 0U) << value;
    errorPosition = 99;
    EXPECT_EQ(AutoCompleteTree().validateToken(R"("q")" + std::string(1, c), 0,
                                               4, errorPosition),
              after)
        << value;
    EXPECT_EQ(errorPosition, after ? 99U : 3U) << value;
  }
}

TEST(Tokenizer, RemovesCapturingGroups) {
  EXPECT_EQ(statefreeRegex(""), "");
  EXPECT_EQ(statefreeRegex("a"), "a");
  EXPECT_EQ(statefreeRegex("(a)(b)"), "(?:a)(?:b)");
  EXPECT_EQ(statefreeRegex("((a))"), "(?:(?:a))");
  EXPECT_EQ(statefreeRegex("[(]\\("), "[(?:]\\(?:");
}

TEST(Tokenizer, TrimsQuotes) {
  struct {
    char const* text;
    char const* trimmed;
  } const rows[] = {
      {R"("abc")", "abc"},
      {R"(x"abc")", R"(abc")"},
      {"abc", "abc"},
      {"", ""},
      {R"("")", ""},
      {R"(")", ""},
      {R"("abc)", "abc"},
      {R"(abc")", ""},
      {R"("a"b")", R"(a"b)"},
      {R"("a" b)", "a"},
      {R"(xy"ab"c)", R"(ab"c)"},
  };
  for (auto const& row : rows) {
    std::string text = row.text;
    EXPECT_EQ(trimQuotes(text), row.trimmed) << row.text;
    EXPECT_EQ(text, row.text);
  }
}

}  // namespace
}  // namespace QorCliUtilities
