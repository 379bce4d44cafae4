#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>

#include "Error.h"
#include "QorReturn.h"

namespace QorCliUtilities {
namespace {

TEST(Error, ReportsTheMessageAndTheTextOfTheCode) {
  std::string const endless(5000, 'm');
  struct {
    std::string message;
    int code;
    std::string text;
  } const rows[] = {
      {"x", 0, "x"},
      {"", 0, ""},
      {"x", 5, "x, rc = 5, error:Missing dependency"},
      {"x", -1, "x, rc = -1, error:Failure"},
      {"", 1, ", rc = 1, error:Invalid argument"},
      {"x", 77, "x, rc = 77, error:Unknown return code"},
      {"100%d", 2, "100%d, rc = 2, error:Not found"},
      {endless, 0, endless},
      {endless, 3, endless + ", rc = 3, error:Already exists"},
  };
  for (auto const& row : rows) {
    Error const error(row.message, row.code);
    EXPECT_EQ(error.name(), row.text);
    EXPECT_EQ(error.what(), row.text);
    EXPECT_EQ(error.message(), row.message);
    EXPECT_EQ(error.code(), row.code);
  }
}

TEST(Error, NamesEveryCodeAsTheFrameworkDoes) {
  for (int code = -3; code < 10; ++code) {
    if (code == 0) continue;
    EXPECT_EQ(std::string(Error("x", code).what()),
              "x, rc = " + std::to_string(code) +
                  ", error:" + Qor::QorReturn::strerror(code));
  }
}

TEST(Error, IsCaughtAsItsBases) {
  EXPECT_THROW(throw Error("x", 0), Poco::Exception);
  EXPECT_THROW(throw Error("x", 0), std::exception);
}

TEST(Error, ACopyHasATextOfItsOwn) {
  auto const original = std::make_unique<Error>("x", 5);
  Error const copy(*original);
  EXPECT_NE(copy.name(), original->name());
  EXPECT_STREQ(copy.name(), "x, rc = 5, error:Missing dependency");
}

struct Named : Error {
  using Error::Error;
  char const* name() const noexcept override { return "named"; }
};

TEST(Error, WhatFollowsANameOverriddenInASubclass) {
  EXPECT_STREQ(Named("x", 0).what(), "named");
}

TEST(Error, ComposesItsTextAnewInsteadOfAppending) {
  Error error("x", 2);
  error.setMsgString();
  EXPECT_STREQ(error.what(), "x, rc = 2, error:Not found");
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
