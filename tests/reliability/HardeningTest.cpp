#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdio.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace qor_test {
namespace {

using testing::Contains;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

class Hardening : public testing::TestWithParam<char const*> {
 protected:
  static std::string readelf(std::string const& options);
};

// What readelf says about the built library.
std::string Hardening::readelf(std::string const& options) {
  std::string const command =
      QOR_READELF " --wide " + options + " '" + GetParam() + "'";
  std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"),
                                             pclose);
  if (!pipe) throw std::runtime_error("readelf cannot be started");
  std::string text;
  char buffer[4096];
  while (fgets(buffer, sizeof buffer, pipe.get()) != nullptr) text += buffer;
  if (pclose(pipe.release()) != 0) throw std::runtime_error("readelf failed");
  return text;
}

std::vector<std::string> linesWith(std::string const& word,
                                   std::string const& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (line.find(word) != std::string::npos) lines.push_back(line);
  }
  return lines;
}

TEST_P(Hardening, RelocatedDataBecomeReadOnly) {
  EXPECT_EQ(1U, linesWith("GNU_RELRO", readelf("--segments")).size());
}

// Without it the table of imported functions would stay writable.
TEST_P(Hardening, NamesAreBoundAtOnce) {
  std::string const dynamic = readelf("--dynamic");
  // An entry of its own, or a flag: the linker writes either.
  EXPECT_THAT(dynamic, HasSubstr("BIND_NOW"));
  EXPECT_THAT(linesWith("(FLAGS_1)", dynamic), Contains(HasSubstr("NOW")));
}

TEST_P(Hardening, CodeIsNotRelocated) {
  EXPECT_THAT(readelf("--dynamic"), Not(HasSubstr("TEXTREL")));
}

TEST_P(Hardening, TheStackIsNotExecutable) {
  std::vector<std::string> const stack =
      linesWith("GNU_STACK", readelf("--segments"));
  ASSERT_EQ(1U, stack.size());
  EXPECT_THAT(stack[0], ContainsRegex(" RW +0x"));
}

TEST_P(Hardening, NoMemoryIsWritableAndExecutable) {
  std::vector<std::string> const segments =
      linesWith("  LOAD ", readelf("--segments"));
  EXPECT_GT(segments.size(), 1U);
  EXPECT_THAT(segments, Not(Contains(HasSubstr(" RWE "))));
}

// Sanitizers bring checks of their own, and fortified functions need an
// optimising compiler.
#if defined(QOR_FORTIFIED)
TEST_P(Hardening, StackFramesAreChecked) {
  EXPECT_THAT(linesWith("UND", readelf("--dyn-syms")),
              Contains(HasSubstr(" __stack_chk_fail")));
}

// clang drops a buffer's check where it can prove the bound, as it can for the
// few buffers of fixed size that the library has.
#if !defined(__clang__)
TEST_P(Hardening, BuffersAreChecked) {
  EXPECT_THAT(linesWith("UND", readelf("--dyn-syms")),
              Contains(ContainsRegex(" __[a-z]+_chk@")));
}
#endif
#endif

INSTANTIATE_TEST_SUITE_P(Plugins, Hardening,
                         testing::Values(QOR_CLI_PIPE_LIBRARY,
                                         QOR_CLI_TEXT_LIBRARY),
                         [](auto const& plugin) {
                           return plugin.index == 0 ? "Pipe" : "Text";
                         });

}  // namespace
}  // namespace qor_test
