#include "PocoSearch.h"

#include <Poco/Exception.h>

#include <utility>

#include "CompileStack.h"
#include "StackLeft.h"

namespace QorCliPipe {
namespace {

using Poco::RegularExpression;

// What matching takes of the stack, measured and rounded up generously: so much
// for any pattern, and so much for each level of its recursion.
constexpr std::size_t kMatchStack = 24 * 1024;  // bytes
constexpr std::size_t kMatchStackPerLevel = 640;

// What it may take of memory, where it takes that instead: enough for the most
// calls of groups that a pattern may have.
constexpr std::size_t kMatchMemory = 128 * 1024;  // KiB

// A longer line's memory is not kept for the next one.
constexpr std::size_t kMostKept = 64 * 1024;  // bytes

// The whole match and 20 groups are what Poco has room for.
constexpr std::size_t kPocoGroups = 20;

// How many levels of recursion the stack that is left can take.
std::size_t affordableRecursion() {
  std::size_t const left = stackLeft();
  return left < kMatchStack ? 0 : (left - kMatchStack) / kMatchStackPerLevel;
}

bool continuesCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

}  // namespace

int pocoOptions(bool ignoreCase) {
  return RegularExpression::RE_NEWLINE_LF |
         (ignoreCase ? RegularExpression::RE_CASELESS : 0);
}

PocoSearch::PocoSearch(std::string const& pattern, bool ignoreCase,
                       JitExpression::Traits const& traits,
                       CompileDemand const& demand)
    : pattern_(pattern),
      options_(pocoOptions(ignoreCase)),
      isUtf8_(traits.isUtf8),
      demand_(demand) {
  if (traits.groups <= kPocoGroups) return;
  checkCompileStack(demand);
  manyGroups_.emplace(pattern, ignoreCase);
}

void PocoSearch::setLine(std::string_view line) {
  if (line_.capacity() > kMostKept) line_ = {};
  line_ = line;
  isLineChecked_ = false;
  recursion_ = affordableRecursion();
}

PocoSearch::Answer PocoSearch::search(std::uint32_t stepLimit) {
  return match(0, JitExpression::Beginning::kAnywhere, stepLimit);
}

PocoSearch::Answer PocoSearch::matchAt(std::size_t start,
                                       std::uint32_t stepLimit) {
  if (isUtf8_ && start < line_.size() && continuesCharacter(line_[start])) {
    return Answer::kNoMatch;
  }
  Answer const answer =
      match(start, JitExpression::Beginning::kHere, stepLimit);
  isLineChecked_ = isLineChecked_ || answer != Answer::kUndecided;
  return answer;
}

PocoSearch::Answer PocoSearch::match(std::size_t start,
                                     JitExpression::Beginning beginning,
                                     std::uint32_t stepLimit) {
  if (manyGroups_) {
    return manyGroups_->match(line_, start, beginning, isLineChecked_,
                              {stepLimit, recursion_, kMatchMemory});
  }
  bool const isHere = beginning == JitExpression::Beginning::kHere;
  return matchWithPoco(
      start, stepLimit,
      (isHere ? RegularExpression::RE_ANCHORED : 0) |
          (isLineChecked_ ? RegularExpression::RE_NO_UTF8_CHECK : 0));
}

// A match may be made to begin behind its end; Poco takes the rest of the line
// for its text then.
PocoSearch::Answer PocoSearch::matchWithPoco(std::size_t start,
                                             std::uint32_t stepLimit,
                                             int options) {
  try {
    RegularExpression::Match match;
    if (limited(stepLimit).match(line_, start, match, options) == 0) {
      return Answer::kNoMatch;
    }
    bool const isEmpty = match.length == 0 || match.offset == line_.size();
    return isEmpty ? Answer::kEmptyMatch : Answer::kMatch;
  } catch (Poco::RegularExpressionException const&) {
    return Answer::kUndecided;
  }
}

// Poco has no parameters for the limits, but a pattern can set its own.
RegularExpression& PocoSearch::limited(std::uint32_t stepLimit) {
  std::string limits = (JitExpression::kMatchesOnStack
                            ? "(*LIMIT_RECURSION=" + std::to_string(recursion_)
                            : "(*LIMIT_HEAP=" + std::to_string(kMatchMemory)) +
                       ")(*LIMIT_MATCH=" + std::to_string(stepLimit) + ")";
  if (!limited_ || limits != limits_) {
    checkCompileStack(demand_);
    limited_.emplace(limits + pattern_, options_, true);
    limits_ = std::move(limits);
  }
  return *limited_;
}

}  // namespace QorCliPipe
