#ifndef QOR_UNIT_REFUSAL_H
#define QOR_UNIT_REFUSAL_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Error.h"

namespace QorUnit {

// A call that a node refuses, and the text of the error that it throws.
struct Refusal {
  std::vector<std::string> tokens;
  unsigned position;
  unsigned mode;
  char const* text;
};

// Expects `call` to throw an Error with that text and no code.
template <class Call>
void expectError(char const* text, Call const& call) {
  try {
    call();
    FAIL() << text;
  } catch (QorCliUtilities::Error const& error) {
    EXPECT_STREQ(error.what(), text);
    EXPECT_EQ(error.code(), 0);
  }
}

}  // namespace QorUnit

#endif
