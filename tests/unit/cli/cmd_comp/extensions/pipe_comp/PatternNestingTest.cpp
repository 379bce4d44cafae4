#include <gtest/gtest.h>

#include <ostream>

#include "PatternNesting.h"

namespace qor_test {
namespace {

struct Nesting {
  char const* pattern;
  std::size_t bound;
};

std::ostream& operator<<(std::ostream& out, Nesting const& nesting) {
  return out << nesting.pattern;
}

class NestingBound : public testing::TestWithParam<Nesting> {};

TEST_P(NestingBound, IsThatOfThePattern) {
  EXPECT_EQ(GetParam().bound, QorCliPipe::nestingBound(GetParam().pattern));
}

INSTANTIATE_TEST_SUITE_P(
    Groups, NestingBound,
    testing::Values(Nesting{"", 0}, Nesting{"a", 0}, Nesting{"(a)", 1},
                    Nesting{"(a)(b)", 1}, Nesting{"((a)(b))", 2},
                    Nesting{"(?:(?=(a)))", 3}, Nesting{"(((", 3},
                    Nesting{")))", 0}, Nesting{"))((", 2}));

INSTANTIATE_TEST_SUITE_P(
    NoGroups, NestingBound,
    testing::Values(Nesting{"\\(\\(", 0}, Nesting{"[((]", 0},
                    Nesting{"[](]", 0}, Nesting{"[^](]", 0},
                    Nesting{"[\\](]", 0}, Nesting{"[[:alpha:](]", 0},
                    Nesting{"\\Q((\\E", 0}, Nesting{"\\Q((", 0},
                    Nesting{"\\c((", 1}, Nesting{"\\", 0},
                    Nesting{"(?#[)((]a))", 2}, Nesting{"(*:[)((]a))", 2},
                    Nesting{"(?#\\Q)((a))", 2}, Nesting{"(a)(b)#", 1},
                    Nesting{"[\\Q]\\E](a)(b)", 1}));

// A ")" that may close no group is not taken to close one.
INSTANTIATE_TEST_SUITE_P(HardToRead, NestingBound,
                         testing::Values(Nesting{"(?C'(')((a))", 2},
                                         Nesting{"(?[(])(a)", 1},
                                         Nesting{"(*UTF8)(a)(b)", 1},
                                         Nesting{"[(", 1}, Nesting{"[[(", 1},
                                         Nesting{"[[:a(", 1}));

// A reference stands for the group.
INSTANTIATE_TEST_SUITE_P(References, NestingBound,
                         testing::Values(Nesting{"(a)(?1)", 2},
                                         Nesting{"(a)\\g1", 2},
                                         Nesting{"(?R)?(?R)?", 3},
                                         Nesting{"(?<n>a)(?&n)(?P>n)", 3}));

}  // namespace
}  // namespace qor_test
