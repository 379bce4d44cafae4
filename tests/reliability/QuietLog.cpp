#include <cstdlib>

namespace qor_test {
namespace {

// Why a pattern is refused is logged. Where thousands are, that would be most
// of what a test does and all of what it shows. Set before the plug-in is
// loaded.
[[maybe_unused]] bool const isQuiet = setenv("QOR_LOG_LEVEL", "3", 0) == 0;

}  // namespace
}  // namespace qor_test
