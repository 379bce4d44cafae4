#include <cxxabi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <set>
#include <stdexcept>

#include "ElfSymbols.h"

namespace qor_test {
namespace {

using testing::ElementsAre;

#ifdef QOR_COMMON_LIBRARY
std::string demangled(std::string const& symbol) {
  int status = 0;
  std::unique_ptr<char, decltype(&std::free)> const name(
      abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status),
      &std::free);
  return status == 0 ? name.get() : symbol;
}

// A constructor has several symbols with the same name.
std::set<std::string> demangledSymbols(std::string const& library) {
  std::set<std::string> names;
  for (std::string const& symbol : exportedSymbols(library)) {
    names.insert(demangled(symbol));
  }
  return names;
}

TEST(ExportedSymbols, OfTheRuntimeAreDeclaredInItsHeaders) {
  EXPECT_THAT(
      demangledSymbols(QOR_COMMON_LIBRARY),
      ElementsAre(
          "Qor::LoggingWrapper::get_level() const",
          "Qor::LoggingWrapper::instance()",
          "Qor::LoggingWrapper::log_printf(Qor::Trace::Subsystem const&, "
          "unsigned int, char const*, char const*, unsigned int, char const*, "
          "...)",
          "Qor::LoggingWrapper::trace_printf(Qor::Trace::Subsystem const&, "
          "char const*, char const*, unsigned int, char const*, ...)",
          "Qor::LoggingWrapper::trace_v2_printf(Qor::Trace::Subsystem const&, "
          "unsigned int, char const*, char const*, unsigned int, char const*, "
          "...)",
          "Qor::QorReturn::strerror(int)",
          "Qor::QorThreadLock::QorThreadLock()", "Qor::QorThreadLock::lock()",
          "Qor::QorThreadLock::unlock()",
          "Qor::QorThreadLock::~QorThreadLock()", "Qor::Trace::Cli"));
}
#endif

TEST(ExportedSymbols, AreTheTwoEntryPoints) {
  for (char const* library : {QOR_CLI_PIPE_LIBRARY, QOR_CLI_TEXT_LIBRARY}) {
    EXPECT_THAT(exportedSymbols(library),
                ElementsAre("qorLCMinit", "qorLCMterminate"))
        << library;
  }
}

TEST(ExportedSymbols, CannotBeReadFromAnotherFile) {
  EXPECT_THROW(exportedSymbols("/dev/null"), std::runtime_error);
}

}  // namespace
}  // namespace qor_test
