#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "PatternScan.h"

namespace qor_test {
namespace {

using QorCliPipe::PatternScan;

// The characters that a scan stands at, one after the other; with "?!" where it
// stops being sure.
std::string scanned(std::string_view pattern) {
  std::string characters;
  bool isSure = true;
  for (PatternScan scan(pattern); !scan.atEnd(); scan.advance()) {
    if (isSure && !scan.isSure()) characters += "?!";
    isSure = scan.isSure();
    characters += pattern[scan.position()];
  }
  return characters;
}

struct Scanned {
  std::string_view pattern;
  std::string_view characters;
};

std::ostream& operator<<(std::ostream& out, Scanned const& row) {
  return out << row.pattern;
}

class PatternScanned : public testing::TestWithParam<Scanned> {};

TEST_P(PatternScanned, StandsAtWhatMayBeAGroup) {
  EXPECT_EQ(GetParam().characters, scanned(GetParam().pattern));
}

INSTANTIATE_TEST_SUITE_P(Characters, PatternScanned,
                         testing::Values(Scanned{"", ""},
                                         Scanned{"a(b|c)*", "a(b|c)*"},
                                         Scanned{"(?:a)(?=b)", "(?:a)(?=b)"},
                                         Scanned{"a#b", "a#b"}));

INSTANTIATE_TEST_SUITE_P(
    Escapes, PatternScanned,
    testing::Values(Scanned{"a\\(b", "a\\b"}, Scanned{"\\c((", "\\("},
                    Scanned{"\\Q((\\Ea", "\\a"}, Scanned{"\\Q((", "\\"},
                    Scanned{"\\Q\\\\Ea", "\\a"}, Scanned{"\\E(", "\\("},
                    Scanned{"\\", "\\"}, Scanned{"\\[(]", "\\(]"}));

INSTANTIATE_TEST_SUITE_P(
    Classes, PatternScanned,
    testing::Values(Scanned{"[(]a", "a"}, Scanned{"[](]a", "a"},
                    Scanned{"[^](]a", "a"}, Scanned{"[^^](]", "(]"},
                    Scanned{"[\\](]a", "a"}, Scanned{"[\\c]]a", "a"},
                    Scanned{"[[(]a", "a"}, Scanned{"[a-](]", "(]"},
                    Scanned{"[#](?#)", ""}));

INSTANTIATE_TEST_SUITE_P(
    NamedClasses, PatternScanned,
    testing::Values(Scanned{"[[:alpha:](]a", "a"},
                    Scanned{"[[:^alpha:](]a", "a"}, Scanned{"[[:(]a", "a"},
                    Scanned{"[[:a](:]]", "(:]]"},
                    Scanned{"[[:a[:alpha:](]a", "a"},
                    Scanned{"[[:alpha](", "("}, Scanned{"[[.](", "("},
                    Scanned{"[[:<:]]a(", "a("}, Scanned{"[[:>:]]a(", "a("}));

INSTANTIATE_TEST_SUITE_P(
    QuotedTextInClasses, PatternScanned,
    testing::Values(Scanned{"[\\Q]\\E(]a", "a"}, Scanned{"[\\Q\\E](]a", "a"},
                    Scanned{"[\\E](]a", "a"}, Scanned{"[^\\E](]a", "a"},
                    Scanned{"[\\E^](]a", "a"}, Scanned{"[a\\E](", "("},
                    Scanned{"[a\\Q[:\\E](", "("}));

INSTANTIATE_TEST_SUITE_P(
    HiddenTexts, PatternScanned,
    testing::Values(Scanned{"(?#[)a", "a"}, Scanned{"(?#\\)a", "a"},
                    Scanned{"(?#(((\n)a(?#)b", "ab"}, Scanned{"(*FAIL)a", "a"},
                    Scanned{"(*UTF8)(*:[)a", "a"}, Scanned{"(*MARK:(\\)a", "a"},
                    Scanned{"(?C)(?C12)a", "a"}));

// Lower-case names are of groups.
INSTANTIATE_TEST_SUITE_P(
    NoHiddenTexts, PatternScanned,
    testing::Values(Scanned{"(*atomic:(a))", "(*atomic:(a))"},
                    Scanned{"(*)", "(*)"}, Scanned{"(*", "(*"}));

INSTANTIATE_TEST_SUITE_P(CommentsOfOptionX, PatternScanned,
                         testing::Values(Scanned{"(?x)a#(", "(?x)a"},
                                         Scanned{"(?x)#(\n(a", "(?x)(a"},
                                         Scanned{"(?x)#\\\n(a", "(?x)(a"},
                                         Scanned{"#(?x)#(", "#(?x)"},
                                         Scanned{"(?i-x)#(", "(?i-x)#("},
                                         Scanned{"(?ix-m)#(", "(?ix-m)"},
                                         Scanned{"(?x-x)#(", "(?x-x)#("},
                                         Scanned{"(?x)(?^)#(", "(?x)(?^)#("},
                                         Scanned{"(?x)\\#(", "(?x)\\("},
                                         Scanned{"(?x)[#](", "(?x)("},
                                         Scanned{"(?<x>#(", "(?<x>#("}));

INSTANTIATE_TEST_SUITE_P(
    ScopesOfOptionX, PatternScanned,
    testing::Values(Scanned{"((?x)a|#)\n)#(", "((?x)a|)#("},
                    Scanned{"(?x:#)\n)#(", "(?x:)#("},
                    Scanned{"(?x)(?-x:#)#(", "(?x)(?-x:#)"},
                    Scanned{"(?x)((?-x)#(a))#(", "(?x)((?-x)#(a))"},
                    Scanned{"(?x)((?i)a)#(", "(?x)((?i)a)"},
                    Scanned{")(?x)#(", ")(?x)"}));

INSTANTIATE_TEST_SUITE_P(
    ClassesOfClasses, PatternScanned,
    testing::Values(Scanned{"(?[[(]])a(", "a("},
                    Scanned{"(?[ ( [a(] + \\( ) & [^b\\]] ])a(", "a("},
                    Scanned{"(?[[:alpha:]-[(]])a(", "a("}));

INSTANTIATE_TEST_SUITE_P(CalloutsWithTexts, PatternScanned,
                         testing::Values(Scanned{"(?C'(')a(", "a("},
                                         Scanned{"(?C{('})a(", "a("},
                                         Scanned{"(?C\"(\"\")\")a(", "a("},
                                         Scanned{"(?C'''(''')a(", "a("},
                                         Scanned{"(?C'')a(", "a("}));

INSTANTIATE_TEST_SUITE_P(
    Newlines, PatternScanned,
    testing::Values(Scanned{"(*CR)(?x)#\n(\r(a", "(?x)(a"},
                    Scanned{"(*LF)(?x)#\r(\n(a", "(?x)(a"},
                    Scanned{"(*CRLF)(?x)#\r(\n(\r\n(a", "(?x)\n(a"},
                    Scanned{"(*ANYCRLF)(?x)#(\r(a#(\n(a", "(?x)(a(a"},
                    Scanned{"(*ANYCRLF)(?x)#(\v(\r\n(a", "(?x)\n(a"},
                    Scanned{"(*NUL)(?x)#(\n(a", "(?x)"},
                    Scanned{"(*ANY)(?x)#(\x85(#(\v(a", "(?x)((a"},
                    Scanned{"(*ANY)(?x)#(\xC5\x85(a", "(?x)(a"},
                    Scanned{"(*ANY)(*UTF8)(?x)#(\xC5\x85(", "(?x)"},
                    Scanned{"(*UTF8)(*ANY)(?x)#(\xC2\x85(a", "(?x)\x85(a"},
                    Scanned{"(*UTF)(*ANY)(?x)#(\xE2\x80\xA8(a",
                            "(?x)\x80\xA8(a"},
                    Scanned{"(*ANY)(*LF)(?x)#(\r(\n(a", "(?x)(a"},
                    Scanned{"(*CR)(*UCP)(?x)#\n(\r(a", "(?x)(a"},
                    Scanned{"(*BSR_ANYCRLF)(?x)#\r(\n(a", "(?x)(a"},
                    Scanned{"(*CR", "?!(*CR"}));

// Some versions of the library leave out blanks in classes when option x is
// given twice, so that what is a "]" in front there is the end elsewhere; they
// always do in classes of classes. From there on, all characters are stood at.
INSTANTIATE_TEST_SUITE_P(
    HardToRead, PatternScanned,
    testing::Values(Scanned{"(?xx)#(\n[(]a[ ](]\\(", "(?xx)a?![ ](]\\("},
                    Scanned{"(?xx)[^\\E\t^(]", "(?xx)?![^\\E\t^(]"},
                    Scanned{"(?x)(?x)[ ](", "(?x)(?x)("},
                    Scanned{"(?xix-i:)[ ](", "(?xix-i:)?![ ]("},
                    Scanned{"(?[ [ ]a] ])(", "?!(?[ [ ]a] ])("}));

// The same.
INSTANTIATE_TEST_SUITE_P(WithoutEnd, PatternScanned,
                         testing::Values(Scanned{"a[(", "a?![("},
                                         Scanned{"[[:a(", "?![[:a("},
                                         Scanned{"(?#[(]\\(", "?!(?#[(]\\("},
                                         Scanned{"(*:(", "?!(*:("},
                                         Scanned{"(?C'[)[(]", "?!(?C'[)[(]"},
                                         Scanned{"(?Cx)[(]", "?!(?Cx)[(]"},
                                         Scanned{"a(?[(]", "a?!(?[(]"}));

bool isRefused(std::string_view pattern) {
  PatternScan scan(pattern);
  while (!scan.atEnd()) scan.advance();
  return scan.isRefused();
}

TEST(PatternScanRefused, IsAPatternWithAPartThatNeverEnds) {
  for (char const* pattern : {"", "[a](?#)(*FAIL)(?C1)", "\\Qa", "(?x)#a", "(",
                              "[\\Qa\\E]", "(?C'a')", "(?[[a]])", "a]"}) {
    EXPECT_FALSE(isRefused(pattern)) << pattern;
  }
  for (char const* pattern :
       {"[", "a[]", "[^]", "[\\]", "[\\Q]", "(?#", "(*F", "(*:a", "(?C",
        "(?C'a", "(?C'a''", "(?C'a')(?C1", "(?[[a]", "(?[[a])", "(?[[a"}) {
    EXPECT_TRUE(isRefused(pattern)) << pattern;
  }
}

}  // namespace
}  // namespace qor_test
