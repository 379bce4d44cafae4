#include <gtest/gtest.h>

#include "output/ControlCharacters.h"

namespace QorCliEngine {
namespace {

using ControlCharacters::visible;

struct Row {
  std::string_view text;
  char const* shown;
};

class ControlCharactersTest : public testing::TestWithParam<Row> {};

TEST_P(ControlCharactersTest, visible) {
  EXPECT_EQ(visible(GetParam().text), GetParam().shown);
}

using namespace std::string_view_literals;

INSTANTIATE_TEST_SUITE_P(
    Texts, ControlCharactersTest,
    testing::Values(Row{"", ""}, Row{"plain\ttext\n", "plain\ttext\n"},
                    Row{"\033]0;title\007", "^[]0;title^G"},
                    Row{"\0\1\37\177"sv, "^@^A^_^?"},
                    Row{"over\rwritten\b\n", "over^Mwritten^H\n"},
                    Row{"crlf\r\nlast\r", "crlf\r\nlast^M"},
                    // 0x9B introduces a sequence as an escape and a bracket do.
                    Row{"\2332J", "M-^[2J"}, Row{"\302\2332J", "M-^[2J"},
                    Row{"\302\200\302\237\302\240", "M-^@M-^_\302\240"},
                    Row{"\303\204\342\202\254\360\237\230\200",
                        "\303\204\342\202\254\360\237\230\200"},
                    // The second byte would be a control character alone.
                    Row{"\303\233", "\303\233"}, Row{"\303", "\303"},
                    Row{"\303\033[", "\303^[["}, Row{"\342\202", "\342M-^B"},
                    Row{"\377\233", "\377M-^["}));

TEST(ControlCharactersTest, inALineTheyAllAreVisible) {
  EXPECT_EQ(ControlCharacters::visibleInLine("a\tb\nc\r\nd\033\302\233"),
            "a^Ib^Jc^M^Jd^[M-^[");
}

}  // namespace
}  // namespace QorCliEngine
