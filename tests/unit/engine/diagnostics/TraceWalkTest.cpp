#include <gtest/gtest.h>

#include "diagnostics/TraceWalk.h"

namespace QorCliEngine {
namespace {

std::string entry(std::string const& function, std::string const& rest = "") {
  return "level 9 cli Tree.cpp:12 " + function + ":  >> " + rest + "\n";
}

std::string left(std::string const& function, std::string const& rest = "") {
  return "level 10 cli Tree.cpp:34 " + function + ":  << " + rest + "\n";
}

std::string progress(std::string const& text) {
  return "level 0 cli Tree.cpp:23 run: " + text + "\n";
}

TEST(TraceWalkTest, isIndentedByDepth) {
  struct {
    std::string records;
    std::string walk;
  } const rows[] = {
      {"", ""},
      {entry("run") + left("run", "0"), ">> run << 0\n"},
      {entry("run") + left("run"), ">> run <<\n"},
      {entry("stop", "Reason: 1"), ">> stop Reason: 1\n"},
      {entry("a") + progress("Checking") + left("a", "true") + entry("b"),
       ">> a\n  Checking\n<< a true\n>> b\n"},
      {entry("a") + entry("b") + left("b", "1") + progress("on") +
           left("a", "2"),
       ">> a\n  >> b << 1\n  on\n<< a 2\n"},
      {entry("a") + entry("a") + progress("on") + left("a", "1") +
           left("a", "2"),
       ">> a\n  >> a\n    on\n  << a 1\n<< a 2\n"},
      {entry("operator bool") + left("operator bool", "true"),
       ">> operator bool << true\n"},
      {entry("a") + "severity 4 cli Tree.cpp:1 run: no portal\n",
       ">> a\n  severity 4: no portal\n"},
  };
  for (auto const& row : rows) EXPECT_EQ(traceWalk(row.records), row.walk);
}

TEST(TraceWalkTest, whatSilentFunctionsCallIsLeftOut) {
  EXPECT_EQ(traceWalk(entry("a") + entry("b", "x") + entry("c") + left("c") +
                      left("b", "1") + left("a", "2")),
            ">> a << 2\n");
  EXPECT_EQ(traceWalk(entry("a") + progress("on") + entry("b", "x") +
                      entry("c") + left("c") + left("b", "1") + left("a", "2")),
            ">> a\n  on\n  >> b x << 1\n<< a 2\n");
}

TEST(TraceWalkTest, functionsLeftByAnExceptionAreClosed) {
  EXPECT_EQ(traceWalk(entry("a") + entry("b") + entry("c") + left("a", "-1") +
                      entry("d")),
            ">> a\n  >> b\n    >> c\n<< a -1\n>> d\n");
}

TEST(TraceWalkTest, exitsThatWereNeverEnteredCloseNothing) {
  EXPECT_EQ(
      traceWalk(entry("a") + left("b", "true") + progress("on") + left("a")),
      ">> a\n  << b true\n  on\n<< a\n");
  // The same name in another file is another function.
  EXPECT_EQ(traceWalk(entry("a") + "level 10 cli Node.cpp:1 a:  << 0\n" +
                      progress("on")),
            ">> a\n  << a 0\n  on\n");
}

TEST(TraceWalkTest, linesThatAreNoRecordsAreShown) {
  struct {
    std::string line;
    std::string shown;
  } const rows[] = {
      {"second line of a text", "second line of a text"},
      {"level of water", "level of water"},
      {"level 9 cli Tree.cpp:12 function", "level 9 cli Tree.cpp:12 function"},
      {"", ""},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(traceWalk(entry("a") + row.line + '\n'),
              ">> a\n  " + row.shown + "\n");
  }
}

}  // namespace
}  // namespace QorCliEngine
