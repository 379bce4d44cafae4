#include <gtest/gtest.h>

#include <limits>

#include "QorReturn.h"

namespace {

TEST(QorReturn, HasATextForEveryCode) {
  struct {
    QorReturnT code;
    char const* text;
  } const rows[] = {
      {-1, "Failure"},
      {0, "Success"},
      {1, "Invalid argument"},
      {2, "Not found"},
      {3, "Already exists"},
      {4, "Not supported"},
      {5, "Missing dependency"},
      {6, "Unknown return code"},
      {-2, "Unknown return code"},
      {std::numeric_limits<QorReturnT>::max(), "Unknown return code"},
      {std::numeric_limits<QorReturnT>::min(), "Unknown return code"},
  };
  for (auto const& row : rows) {
    EXPECT_STREQ(Qor::QorReturn::strerror(row.code), row.text) << row.code;
  }
}

}  // namespace
