#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "ElfSymbols.h"

namespace qor_test {
namespace {

using testing::ElementsAre;

TEST(ExportedSymbols, AreTheTwoEntryPoints) {
  EXPECT_THAT(exportedSymbols(QOR_CLI_PIPE_LIBRARY),
              ElementsAre("qorLCMinit", "qorLCMterminate"));
}

TEST(ExportedSymbols, CannotBeReadFromAnotherFile) {
  EXPECT_THROW(exportedSymbols("/dev/null"), std::runtime_error);
}

}  // namespace
}  // namespace qor_test
