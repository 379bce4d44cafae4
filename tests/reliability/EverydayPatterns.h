#ifndef QOR_TEST_EVERYDAY_PATTERNS_H
#define QOR_TEST_EVERYDAY_PATTERNS_H

#include <string>
#include <vector>

namespace qor_test {

// Patterns that operators of network devices use: addresses, times, interfaces,
// log records. All are different, and none begins or ends with a blank.
std::vector<std::string> everydayPatterns();

// A log of 100 lines, each with its line feed, some of which match those
// patterns. The same in each call.
std::vector<std::string> everydayLines();

}  // namespace qor_test

#endif
