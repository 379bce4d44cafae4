#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "RequiredText.h"

namespace {

using QorCliPipe::RequiredText;
using QorCliPipe::requiredText;

struct Row {
  std::string pattern;
  std::vector<std::string> anyOf;
  bool sufficient;
};

std::ostream& operator<<(std::ostream& out, Row const& row) {
  return out << row.pattern;
}

class RequiredTextTest : public testing::TestWithParam<Row> {};

TEST_P(RequiredTextTest, isReadFromThePattern) {
  RequiredText const required = requiredText(GetParam().pattern);
  EXPECT_EQ(GetParam().anyOf, required.anyOf);
  EXPECT_EQ(GetParam().sufficient, required.sufficient);
}

INSTANTIATE_TEST_SUITE_P(PlainTexts, RequiredTextTest,
                         testing::Values(Row{"error", {"error"}, true},
                                         Row{"e", {"e"}, true},
                                         Row{"a\\.b", {"a.b"}, true},
                                         Row{"up|down", {"up", "down"}, true},
                                         Row{"(up|down)", {"up", "down"}, true},
                                         Row{"(?:a|b)", {"a", "b"}, true}));

INSTANTIATE_TEST_SUITE_P(
    LongestRuns, RequiredTextTest,
    testing::Values(Row{"link (up|down)$", {"link "}, false},
                    Row{"retry [0-9]+", {"retry "}, false},
                    Row{"^ab.*abc\\d", {"abc"}, false},
                    Row{"abc+d", {"abc"}, false}, Row{"xabc*d", {"xab"}, false},
                    Row{"xabc?", {"xab"}, false},
                    Row{"abc{2,3}d", {"abc"}, false},
                    Row{"abc{0,3}d", {"ab"}, false},
                    Row{"(?:up|fail\\w*)", {"up", "fail"}, false},
                    Row{"(ab[)]c|cd)", {"ab", "cd"}, false},
                    Row{"(ab)cd(ef)", {"cd"}, false}));

INSTANTIATE_TEST_SUITE_P(SingleCharacters, RequiredTextTest,
                         testing::Values(Row{"\\d\\.\\d", {"."}, false},
                                         Row{"\\da\\d", {}, false},
                                         Row{"\\d:\\d", {}, false}));

INSTANTIATE_TEST_SUITE_P(
    Nothing, RequiredTextTest,
    testing::Values(Row{"", {}, false}, Row{"ab|", {}, false},
                    Row{"ab|.", {}, false}, Row{"(ab)?", {}, false},
                    Row{"(ab)(cd)", {}, false}, Row{"[a-f]{4}", {}, false},
                    Row{"a|b|c|d|e|f|g|h|i", {}, false},
                    Row{"(?i)ab", {}, false}, Row{"(*UTF8)ab", {}, false},
                    Row{"\\Qab", {}, false}, Row{"ab{", {}, false},
                    Row{"(?=ab)", {}, false}, Row{"\\x41bc", {}, false}));

}  // namespace
