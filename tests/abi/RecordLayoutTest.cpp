#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

#include "CliApiContext5.h"
#include "QorCliApiContext.h"
#include "QorTypes.h"

namespace qor_test {
namespace {

using QorCliUtilities::CliApiContext5;

static_assert(std::is_same_v<QorReturnT, std::int32_t>);
static_assert(
    std::is_same_v<std::underlying_type_t<QorCliActionEnum_2T>, std::uint32_t>);
static_assert(
    std::is_same_v<std::underlying_type_t<QorCliModeEnum_1T>, std::uint32_t>);
static_assert(std::is_same_v<std::underlying_type_t<QorCliCompletionToken_1T>,
                             std::uint32_t>);
static_assert(std::is_same_v<std::underlying_type_t<QorCliSortOrderEnum_3T>,
                             std::uint32_t>);
static_assert(
    std::is_same_v<std::underlying_type_t<QorCliLockEnum_1T>, std::uint32_t>);
static_assert(std::is_same_v<std::underlying_type_t<QorStateChangeReason>,
                             std::uint32_t>);

// The byte offsets of the version-5 context record, for 32-bit words and for
// 64-bit words.
struct Offset {
  std::size_t ilp32;
  std::size_t lp64;

  constexpr operator std::size_t() const {
    return sizeof(void*) == 4 ? ilp32 : lp64;
  }
};

constexpr Offset kSessionId{0, 0};
constexpr Offset kTransactionHandle{4, 8};
constexpr Offset kLoginName{8, 16};
constexpr Offset kMode{12, 24};
constexpr Offset kCursor{16, 32};
constexpr Offset kPrompt{20, 40};
constexpr Offset kTimeout{24, 48};
constexpr Offset kUnused{28, 52};
constexpr Offset kAuthorisationHandle{32, 56};
constexpr Offset kSetCursor{40, 64};
constexpr Offset kSetPrompt{44, 72};
constexpr Offset kSetOutput{48, 80};
constexpr Offset kSetAutocompleteResult{52, 88};
constexpr Offset kSessionShutdown{56, 96};
constexpr Offset kExclusiveUse{60, 104};
constexpr Offset kSetSortableAutocompleteResult{64, 112};
constexpr Offset kLastStatus{68, 120};
constexpr Offset kLock{72, 124};
constexpr Offset kSetLock{76, 128};
constexpr Offset kSize{80, 136};

// A context record as bytes, and the adapter that reads them.
class RecordLayout : public testing::Test {
 protected:
  template <class Value>
  void put(Offset offset, Value value) {
    std::memcpy(bytes_ + offset, &value, sizeof value);
  }

  template <class Value>
  Value get(Offset offset) const {
    Value value;
    std::memcpy(&value, bytes_ + offset, sizeof value);
    return value;
  }

  // Stores a function at its offset, and zeros everywhere else.
  template <class Function>
  void putOnly(Offset offset, Function function) {
    std::memset(bytes_, 0, sizeof bytes_);
    put(offset, function);
  }

  alignas(8) unsigned char bytes_[kSize] = {};
  CliApiContext5 context_{reinterpret_cast<QorCliApiContext_5*>(bytes_)};
};

TEST_F(RecordLayout, TheRecordHasItsSize) {
  EXPECT_EQ(static_cast<std::size_t>(kSize), sizeof(QorCliApiContext_5));
}

TEST_F(RecordLayout, NumbersAreReadAtTheirOffsets) {
  put(kSessionId, 0x80000001U);
  put(kTransactionHandle, std::numeric_limits<unsigned long>::max() - 1);
  put(kMode, 0x80000002U);
  put(kTimeout, 0x80000003U);
  put(kUnused, 0xffffffffU);
  put(kAuthorisationHandle, std::uint64_t{0x8000000000000004U});
  put(kLastStatus, std::int32_t{-5});
  put(kLock, 0x80000006U);
  put(kExclusiveUse, true);
  EXPECT_EQ(0x80000001U, context_.getSessionId());
  EXPECT_EQ(std::numeric_limits<unsigned long>::max() - 1,
            context_.getTxHandle());
  EXPECT_EQ(0x80000002U, context_.getMode());
  EXPECT_EQ(0x80000003U, context_.getTimeout());
  EXPECT_EQ(0x8000000000000004U, context_.getAuthHandle());
  EXPECT_EQ(-5, context_.getLastStatus());
  EXPECT_EQ(0x80000006U, context_.getLock());
  EXPECT_TRUE(context_.getExclusiveUse());
}

TEST_F(RecordLayout, TextsAreReadAtTheirOffsets) {
  char const login[] = "login";
  char const cursor[] = "cursor";
  char const prompt[] = "prompt";
  put(kLoginName, &login[0]);
  put(kCursor, &cursor[0]);
  put(kPrompt, &prompt[0]);
  EXPECT_EQ(login, context_.getLoginName());
  EXPECT_EQ(cursor, context_.getCursor());
  EXPECT_EQ(prompt, context_.getPrompt());
}

TEST_F(RecordLayout, SettersWriteOnlyAtTheirOffsets) {
  std::memset(bytes_, 0x55, sizeof bytes_);
  unsigned char expected[kSize];
  std::memset(expected, 0x55, sizeof expected);
  auto const expect = [&expected](Offset offset, auto value) {
    std::memcpy(expected + offset, &value, sizeof value);
  };
  context_.setTxHandle(1);
  expect(kTransactionHandle, 1UL);
  context_.setMode(QorCliModeEnum_1T{2});
  expect(kMode, std::uint32_t{2});
  context_.setExclusiveUse(true);
  expect(kExclusiveUse, std::uint8_t{1});
  context_.setLastStatus(-3);
  expect(kLastStatus, std::int32_t{-3});
  EXPECT_EQ(0, std::memcmp(expected, bytes_, sizeof expected));
}

// Each function returns a different number, so that a wrong one is noticed, and
// is alone in the record, so that it is missed at other offsets.
TEST_F(RecordLayout, FunctionsAreCalledAtTheirOffsets) {
  EXPECT_EQ(-1, context_.setCursor("c"));
  putOnly(
      kSetCursor, +[](QorCliApiContext_5*, char const*) { return 11; });
  EXPECT_EQ(11, context_.setCursor("c"));

  EXPECT_EQ(-1, context_.setPrompt());
  putOnly(
      kSetPrompt, +[](QorCliApiContext_5*, char const*) { return 12; });
  context_.setPromptString("p");
  EXPECT_EQ(12, context_.setPrompt());

  EXPECT_EQ(-1, context_.setOutput(0, 1, 2, "o"));
  putOnly(
      kSetOutput, +[](QorCliApiContext_5*, unsigned, unsigned, unsigned,
                      char const*) { return 13; });
  EXPECT_EQ(13, context_.setOutput(0, 1, 2, "o"));

  EXPECT_EQ(-1, context_.sessionShutdown(1));
  putOnly(
      kSessionShutdown, +[](QorCliApiContext_5*, unsigned) { return 15; });
  EXPECT_EQ(15, context_.sessionShutdown(1));

  EXPECT_EQ(-1, context_.setLock(QOR_CLI_LOCK_EXCLUSIVE));
  putOnly(
      kSetLock, +[](QorCliApiContext_5*, unsigned) { return 17; });
  EXPECT_EQ(17, context_.setLock(QOR_CLI_LOCK_EXCLUSIVE));
}

TEST_F(RecordLayout, CompletionFunctionsAreCalledAtTheirOffsets) {
  EXPECT_EQ(-1, context_.setAutocompleteResult(0, 1, 2, QOR_CLI_TOKEN_WORD, "c",
                                               "h"));
  putOnly(
      kSetAutocompleteResult,
      +[](QorCliApiContext_5*, unsigned, unsigned, unsigned, unsigned,
          char const*, char const*) { return 14; });
  EXPECT_EQ(14, context_.setAutocompleteResult(0, 1, 2, QOR_CLI_TOKEN_WORD, "c",
                                               "h"));

  EXPECT_EQ(
      -1, context_.setSortableAutocompleteResult(
              0, 1, 2, QOR_CLI_TOKEN_WORD, "c", "h", QOR_CLI_SORT_OPTION, "k"));
  putOnly(
      kSetSortableAutocompleteResult,
      +[](QorCliApiContext_5*, unsigned, unsigned, unsigned, unsigned,
          char const*, char const*, unsigned, char const*) { return 16; });
  EXPECT_EQ(
      16, context_.setSortableAutocompleteResult(
              0, 1, 2, QOR_CLI_TOKEN_WORD, "c", "h", QOR_CLI_SORT_OPTION, "k"));
}

}  // namespace
}  // namespace qor_test
