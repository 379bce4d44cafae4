#include <gtest/gtest.h>

#include <thread>

#include "diagnostics/StageFigures.h"

namespace QorCliEngine {
namespace {

using std::chrono::milliseconds;

TEST(StageFiguresTest, textIsCounted) {
  TextFigures figures;
  figures.add("one\ntwo\n");
  figures.add("");
  figures.add("no line feed");
  EXPECT_EQ(figures.lines, 2U);
  EXPECT_EQ(figures.bytes, 20U);
}

TEST(StageFiguresTest, clocksAddUp) {
  StageFigures figures;
  for (int i = 0; i < 2; ++i) {
    StageClock const clock(&figures);
    std::this_thread::sleep_for(milliseconds(5));
  }
  EXPECT_GE(figures.time, milliseconds(10));
  StageClock const idle(nullptr);
}

TEST(StageFiguresTest, tableIsAligned) {
  EXPECT_EQ(
      figuresTable(
          {{"show x", {}, {7, 70}, std::chrono::nanoseconds(1499)},
           {"filter y", {7, 70}, {12345678901, 3}, milliseconds(12345678)}}),
      " lines in  lines out   bytes in  bytes out    time/ms  stage\n"
      "        -          7          -         70      0.001  show x\n"
      "        7  12345678901         70          3  12345678.000  "
      "filter y\n");
}

}  // namespace
}  // namespace QorCliEngine
