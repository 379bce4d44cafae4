#include <gtest/gtest.h>

#include <cstdlib>

#include "QorLoggingWrapper.h"
#include "diagnostics/LogCapture.h"

namespace QorCliEngine {
namespace {

void trace(std::string const& text) {
  Qor::LoggingWrapper::instance().trace_printf(
      Qor::Trace::Cli, "folder/File.cpp", "run", 5, "%s", text.c_str());
}

std::string recordOf(std::string const& text) {
  return "level 0 cli File.cpp:5 run: " + text + '\n';
}

// One test, because the logging facade is made once in a process.
TEST(LogCaptureTest, recordsAreTakenOnceAndNoneIsLost) {
  ::setenv("QOR_LOG_LEVEL", "3", 1);
  ::unsetenv("QOR_LOG_FILE");
  LogCapture capture(LogCapture::Kind::kTrace);
  EXPECT_STREQ(std::getenv("QOR_LOG_LEVEL"), "3");
  EXPECT_EQ(std::getenv("QOR_LOG_FILE"), nullptr);
  EXPECT_EQ(Qor::LoggingWrapper::instance().get_level(), 10U);
  EXPECT_EQ(capture.take(), "");

  trace("first");
  trace("second");
  EXPECT_EQ(capture.size(), (recordOf("first") + recordOf("second")).size());
  EXPECT_EQ(capture.take(), recordOf("first") + recordOf("second"));
  EXPECT_EQ(capture.take(), "");

  // More than a pipe would hold.
  constexpr int count = 3000;
  std::string expected;
  for (int i = 0; i < count; ++i) {
    std::string const text(100, static_cast<char>('a' + i % 26));
    trace(text);
    expected += recordOf(text);
  }
  EXPECT_EQ(capture.take(), expected);
  trace("after");
  EXPECT_EQ(capture.take(), recordOf("after"));

  trace("dropped");
  capture.drop();
  trace("kept");
  EXPECT_EQ(capture.take(), recordOf("kept"));
}

}  // namespace
}  // namespace QorCliEngine
