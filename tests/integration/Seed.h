#ifndef QOR_TEST_SEED_H
#define QOR_TEST_SEED_H

#include <cstdint>

namespace qor_test {

// The seed of the random tests: the number in the environment variable
// QOR_TEST_SEED, or a new one for each run. The first call prints it. Throws
// std::runtime_error if the variable is not a number.
std::uint32_t testSeed();

}  // namespace qor_test

#endif
