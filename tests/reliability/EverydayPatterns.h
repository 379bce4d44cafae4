#ifndef QOR_TEST_EVERYDAY_PATTERNS_H
#define QOR_TEST_EVERYDAY_PATTERNS_H

#include <string>
#include <vector>

namespace qor_test {

// What operators of network devices filter for: addresses, times, interfaces,
// records of logs. No two are the same, and none begins or ends with a blank.
std::vector<std::string> everydayPatterns();

// A log of 100 lines, each with its line feed, in which those patterns find
// something and miss something. The same at each call.
std::vector<std::string> everydayLines();

}  // namespace qor_test

#endif
