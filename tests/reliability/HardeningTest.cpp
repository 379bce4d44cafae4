#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdio.h>

#include <filesystem>
#include <iterator>
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

// The output of readelf for a file.
std::string readelf(std::string const& options, std::string const& path) {
  std::string const command =
      QOR_READELF " --wide " + options + " '" + path + "'";
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

struct Built {
  char const* name;
  char const* path;
};

class Hardening : public testing::TestWithParam<Built> {
 protected:
  static std::string readelf(std::string const& options) {
    return qor_test::readelf(options, GetParam().path);
  }
};

TEST_P(Hardening, RelocatedDataBecomeReadOnly) {
  EXPECT_EQ(1U, linesWith("GNU_RELRO", readelf("--segments")).size());
}

// Otherwise the table of imported functions would stay writable.
TEST_P(Hardening, NamesAreBoundAtOnce) {
  std::string const dynamic = readelf("--dynamic");
  // Depending on the linker, an entry or a flag.
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

// Sanitizers have checks of their own, and fortified functions need
// optimisation.
#if defined(QOR_FORTIFIED)
TEST_P(Hardening, StackFramesAreChecked) {
  EXPECT_THAT(linesWith("UND", readelf("--dyn-syms")),
              Contains(HasSubstr(" __stack_chk_fail")));
}

// clang omits the check where it can prove the bound, as for the library's few
// buffers of fixed size.
#if !defined(__clang__)
TEST_P(Hardening, BuffersAreChecked) {
  EXPECT_THAT(linesWith("UND", readelf("--dyn-syms")),
              Contains(ContainsRegex(" __[a-z]+_chk@")));
}
#endif
#endif

constexpr Built kShipped[] = {
    {"Pipe", QOR_CLI_PIPE_LIBRARY},
    {"Text", QOR_CLI_TEXT_LIBRARY},
#if defined(QOR_COMMON_LIBRARY)
    {"Runtime", QOR_COMMON_LIBRARY},
#endif
#if defined(QOR_ENGINE)
    {"Engine", QOR_ENGINE},
#endif
};

INSTANTIATE_TEST_SUITE_P(Shipped, Hardening, testing::ValuesIn(kShipped),
                         [](auto const& built) {
                           return std::string(built.param.name);
                         });

// The loader takes an empty entry for the current folder, whose files anybody
// may have put there.
TEST(RunPath, HasNoEmptyEntryInAnyFileOfTheBuild) {
  namespace fs = std::filesystem;
  std::size_t files = 0;
  for (char const* folder : {QOR_BUILD "/bin", QOR_BUILD "/lib"}) {
    for (auto const& entry : fs::recursive_directory_iterator(folder)) {
      fs::path const& path = entry.path();
      if (!entry.is_regular_file() || path.extension() == ".a") continue;
      ++files;
      for (std::string const& line :
           linesWith("path: [", readelf("--dynamic", path))) {
        EXPECT_THAT(line, Not(ContainsRegex("\\[:|::|:]|\\[]"))) << path;
      }
    }
  }
  EXPECT_GE(files, std::size(kShipped));
}

}  // namespace
}  // namespace qor_test
