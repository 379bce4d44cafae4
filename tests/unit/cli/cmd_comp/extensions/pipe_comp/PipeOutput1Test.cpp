#include <gtest/gtest.h>

#include "PipeOutput1.h"

namespace QorCliPipe {
namespace {

using Lines = std::vector<std::string>;

class Sink : public ::testing::Test {
 protected:
  PipeOutput1 sink;
  QorCliUtilities::IOutput& base = sink;
};

TEST_F(Sink, StartsEmpty) { EXPECT_EQ(base.getOutput(), Lines{}); }

TEST_F(Sink, StoresStringsExactlyAndInOrder) {
  base.push_back(std::string("a\nb\n"));
  base.push_back(Lines{"c", "", "d"});
  base.push_back(std::string());
  base.push_back(std::string("nul\0in", 6));
  EXPECT_EQ(base.getOutput(),
            (Lines{"a\nb\n", "c", "", "d", "", std::string("nul\0in", 6)}));
}

TEST_F(Sink, AnEmptyListAppendsNothing) {
  base.push_back(Lines{});
  EXPECT_EQ(base.getOutput(), Lines{});
  base.push_back(std::string("a"));
  base.push_back(Lines{});
  EXPECT_EQ(base.getOutput(), Lines{"a"});
}

TEST_F(Sink, KeepsCopies) {
  std::string line = "a";
  Lines lines{"b"};
  base.push_back(line);
  base.push_back(lines);
  line = lines[0] = "changed";
  EXPECT_EQ(base.getOutput(), (Lines{"a", "b"}));
}

TEST_F(Sink, CanBeModifiedThroughItsOutput) {
  base.push_back(std::string("a"));
  base.getOutput().emplace_back("b");
  EXPECT_EQ(base.getOutput(), (Lines{"a", "b"}));
  base.getOutput().clear();
  EXPECT_EQ(base.getOutput(), Lines{});
  EXPECT_EQ(&base.getOutput(), &sink.getOutput());
}

TEST_F(Sink, ClearsAlsoWhenEmpty) {
  sink.clear();
  EXPECT_EQ(base.getOutput(), Lines{});
  base.push_back(std::string("a"));
  sink.clear();
  EXPECT_EQ(base.getOutput(), Lines{});
  base.push_back(std::string("b"));
  EXPECT_EQ(base.getOutput(), Lines{"b"});
}

}  // namespace
}  // namespace QorCliPipe
