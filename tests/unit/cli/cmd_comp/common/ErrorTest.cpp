#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>

#include "Error.h"
#include "QorReturn.h"

namespace QorCliUtilities {
namespace {

// The suffix for a code, whose text is the framework's.
std::string suffix(int code) {
  return ", rc = " + std::to_string(code) +
         ", error:" + Qor::QorReturn::strerror(code);
}

TEST(Error, ReportsTheMessageAndTheTextOfTheCode) {
  std::string const endless(5000, 'm');
  struct {
    std::string message;
    int code;
    std::string text;
  } const rows[] = {
      {"x", 0, "x"},
      {"", 0, ""},
      {"x", 5, "x" + suffix(5)},
      {"x", -1, "x" + suffix(-1)},
      {"", 1, suffix(1)},
      {"x", 77, "x" + suffix(77)},
      {"100%d", 2, "100%d" + suffix(2)},
      {endless, 0, endless},
      {endless, 3, endless + suffix(3)},
  };
  for (auto const& row : rows) {
    Error const error(row.message, row.code);
    EXPECT_EQ(error.name(), row.text);
    EXPECT_EQ(error.what(), row.text);
    EXPECT_EQ(error.message(), row.message);
    EXPECT_EQ(error.code(), row.code);
  }
}

TEST(Error, IsCaughtAsItsBases) {
  EXPECT_THROW(throw Error("x", 0), Poco::Exception);
  EXPECT_THROW(throw Error("x", 0), std::exception);
}

TEST(Error, ACopyOwnsItsText) {
  auto const original = std::make_unique<Error>("x", 5);
  Error const copy(*original);
  EXPECT_NE(copy.name(), original->name());
  EXPECT_EQ(copy.name(), "x" + suffix(5));
}

struct Named : Error {
  using Error::Error;
  char const* name() const noexcept override { return "named"; }
};

TEST(Error, WhatReturnsAnOverriddenName) {
  EXPECT_STREQ(Named("x", 0).what(), "named");
}

TEST(Error, RebuildsItsTextInsteadOfAppending) {
  Error error("x", 2);
  error.setMsgString();
  EXPECT_EQ(error.what(), "x" + suffix(2));
}

TEST(Error, InheritsCloneAndRethrowFromItsBase) {
  Error const error("x", 5);
  std::unique_ptr<Poco::Exception> const clone(error.clone());
  Poco::Exception const& cloned = *clone;
  EXPECT_EQ(typeid(cloned), typeid(Poco::Exception));
  EXPECT_EQ(clone->message(), "x");
  EXPECT_EQ(clone->code(), 5);
  EXPECT_THROW(error.rethrow(), Poco::Exception);
}

}  // namespace
}  // namespace QorCliUtilities
