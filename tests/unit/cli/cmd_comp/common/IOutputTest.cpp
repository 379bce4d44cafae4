#include <gtest/gtest.h>

#include "Error.h"
#include "IOutput.h"

namespace QorCliUtilities {
namespace {

struct Discarding : IOutput {
  void push_back(std::string const&) override {}
  void push_back(std::vector<std::string> const&) override {}
};

TEST(IOutput, ASinkWithoutStorageHasNoOutput) {
  Discarding sink;
  try {
    sink.getOutput();
    FAIL();
  } catch (Error const& error) {
    EXPECT_STREQ(error.what(), "Output sink has no storage");
    EXPECT_EQ(error.code(), 0);
  }
}

}  // namespace
}  // namespace QorCliUtilities
