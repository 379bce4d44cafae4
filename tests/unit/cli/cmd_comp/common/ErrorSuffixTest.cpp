// The suffix for a return code, with texts of the framework that are too long.

#include <gtest/gtest.h>

#include <string>

#include "Error.h"
#include "QorReturn.h"

namespace {

constexpr std::size_t kHostTextLength = 3000;
constexpr std::size_t kLongestSuffix = 1999;

std::string const& hostText() {
  static std::string const text(kHostTextLength, 'e');
  return text;
}

}  // namespace

// Replaces the function of the framework's runtime library.
char const* Qor::QorReturn::strerror(QorReturnT) noexcept {
  return hostText().c_str();
}

namespace QorCliUtilities {
namespace {

TEST(ErrorSuffix, IsTruncatedUnlikeTheMessage) {
  std::string const message(2500, 'm');
  std::string const suffix = ", rc = 5, error:" + hostText();
  EXPECT_EQ(std::string(Error(message, 5).what()),
            message + suffix.substr(0, kLongestSuffix));
}

TEST(ErrorSuffix, IsAbsentForCodeZero) {
  EXPECT_STREQ(Error("x", 0).what(), "x");
}

}  // namespace
}  // namespace QorCliUtilities
