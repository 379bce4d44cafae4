#include <gtest/gtest.h>

#include <map>
#include <string>

#include "ChildProcess.h"
#include "QorLoggingWrapper.h"

namespace {

using Environment = std::map<std::string, std::string>;
using QorUnit::ChildResult;
using QorUnit::TemporaryFile;

constexpr char kRecords[] =
    "level 0 cli Probe.cpp:12 run: plain 7%\n"
    "level 9 cli Probe.cpp:13 run:  >> in\n"
    "severity 4 cli Probe.cpp:4294967295 stop: lost it\n";

ChildResult probe(std::string const& task, Environment const& environment) {
  ChildResult result = QorUnit::runChild(QOR_LOGGING_PROBE, task, environment);
  EXPECT_EQ(result.exitStatus, 0) << task;
  return result;
}

TEST(LoggingWrapper, TakesTheLevelFromTheEnvironment) {
  struct {
    char const* value;
    char const* level;
  } const rows[] = {
      {"0", "0\n"},
      {"7", "7\n"},
      {"10", "10\n"},
      {"007", "7\n"},
      {"4294967295", "4294967295\n"},
      {"4294967296", "4\n"},
      {"", "4\n"},
      {"-1", "4\n"},
      {"+9", "4\n"},
      {" 9", "4\n"},
      {"9 ", "4\n"},
      {"9x", "4\n"},
      {"0x9", "4\n"},
      {"debug", "4\n"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(probe("", {{"QOR_LOG_LEVEL", row.value}}).out, row.level)
        << "'" << row.value << "'";
  }
  EXPECT_EQ(probe("", {}).out, "4\n");
}

TEST(LoggingWrapper, WritesRecordsToStandardErrorWithoutAFile) {
  TemporaryFile const folder;
  Environment const rows[] = {
      {},
      {{"QOR_LOG_FILE", ""}},
      {{"QOR_LOG_FILE", folder.path() + "/not/there"}},
  };
  for (Environment const& environment : rows) {
    EXPECT_EQ(probe("records", environment).err, kRecords);
  }
}

TEST(LoggingWrapper, DoesNotFilterByLevel) {
  EXPECT_EQ(probe("records", {{"QOR_LOG_LEVEL", "0"}}).err, kRecords);
}

TEST(LoggingWrapper, AppendsRecordsToTheFile) {
  TemporaryFile const file;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(probe("records", {{"QOR_LOG_FILE", file.path()}}).err, "");
  }
  EXPECT_EQ(file.read(), std::string(kRecords) + kRecords);
}

TEST(LoggingWrapper, WritesARecordOnOneLine) {
  EXPECT_EQ(
      probe("lines", {}).err,
      "level 0 cli Probe.cpp:1 run: one\\ntwo\n"
      "level 0 cli Probe.cpp:1 run: \\x01\\x09\\x0D\\x1B[0m\\x7F\xC3\xA9\n");
}

TEST(LoggingWrapper, WritesWholeRecordsDespiteSignals) {
  EXPECT_EQ(probe("interrupted", {}).out, "4\n1000030 bytes\n");
}

TEST(LoggingWrapper, WritesLongRecordsWhole) {
  EXPECT_EQ(probe("long", {}).err,
            "level 0 cli Probe.cpp:1 run: " + std::string(100000, 'x') + "\n");
}

// Errors need level 4, traces a level above 7.
TEST(LoggingWrapper, LevelDecidesWhatOperationsWrite) {
  auto const errors = [](char const* level) {
    std::string const text = probe("operation", {{"QOR_LOG_LEVEL", level}}).err;
    return std::pair(
        text.find("severity 4 cli LoggingProbe.cpp:") != std::string::npos,
        text.find("level ") != std::string::npos);
  };
  EXPECT_EQ(errors("3"), std::pair(false, false));
  EXPECT_EQ(errors("4"), std::pair(true, false));
  EXPECT_EQ(errors("7"), std::pair(true, false));
  EXPECT_EQ(errors("8"), std::pair(true, true));
}

}  // namespace
