#include <cstdlib>

namespace qor_test {
namespace {

// Turns off the log, which would be flooded by thousands of rejected patterns.
// Set before the plug-in is loaded.
[[maybe_unused]] bool const isQuiet = setenv("QOR_LOG_LEVEL", "3", 0) == 0;

}  // namespace
}  // namespace qor_test
