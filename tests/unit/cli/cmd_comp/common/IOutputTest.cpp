#include <gtest/gtest.h>

#include "IOutput.h"
#include "Refusal.h"

namespace QorCliUtilities {
namespace {

using QorUnit::expectError;

struct Discarding : IOutput {
  void push_back(std::string const&) override {}
  void push_back(std::vector<std::string> const&) override {}
};

TEST(IOutput, ASinkWithoutStorageHasNoOutput) {
  Discarding sink;
  expectError("Output sink has no storage", [&] { sink.getOutput(); });
}

}  // namespace
}  // namespace QorCliUtilities
