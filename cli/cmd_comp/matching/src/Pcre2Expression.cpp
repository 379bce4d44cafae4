#include "Pcre2Expression.h"

#include <algorithm>
#include <new>
#include <utility>

#include "PatternError.h"

namespace QorCliMatching {
namespace {

constexpr std::size_t kMaxPattern = std::size_t{64} * 1024;  // bytes
constexpr std::uint32_t kOffsetPairs = 1;                    // the match

constexpr std::size_t kFirstJitStack = std::size_t{32} * 1024;  // bytes
constexpr std::size_t kMaxJitStack = std::size_t{64} << 20;     // bytes
constexpr std::uint32_t kMaxHeap = 128 * 1024;                  // KiB

// PCRE2 may scan the whole line between two callouts. So these limit both the
// callouts and the bytes scanned between two checks of the clock, to a few
// milliseconds.
constexpr std::size_t kCalloutsPerCheck = 4096;
constexpr std::size_t kBytesPerCheck = 20'000'000;

// A byte is compared with each range of a class; longer patterns may have
// larger classes.
constexpr std::size_t kCheapPattern = 64;  // bytes

// A quantified class scans a line without a callout. This many comparisons take
// half a second.
constexpr std::size_t kMaxComparisons = 500'000'000;

// Without callouts: the work of all steps between two checks. Each may copy a
// frame and scan the whole pattern and the whole line.
constexpr std::size_t kWorkPerCheck = 50'000'000;  // bytes

template <class T>
T* required(T* object) {
  if (object == nullptr) throw std::bad_alloc();
  return object;
}

PCRE2_SPTR bytesOf(std::string_view text) {
  return reinterpret_cast<PCRE2_SPTR>(text.data());
}

[[noreturn]] void fail(int status, std::string const& place) {
  if (status == PCRE2_ERROR_HEAP_FAILED || status == PCRE2_ERROR_NOMEMORY) {
    throw std::bad_alloc();
  }
  PCRE2_UCHAR text[256];
  pcre2_get_error_message(status, text, sizeof text);
  throw PatternError(reinterpret_cast<char const*>(text) + place);
}

// In UTF-8, PCRE2 looks up the other case of every character in a range: up to
// nine milliseconds for each hyphen.
bool foldsTooMuch(std::string_view pattern, bool ignoreCase) {
  constexpr std::ptrdiff_t maxRanges = 64;
  auto const has = [pattern](char const* text) {
    return pattern.find(text) != std::string_view::npos;
  };
  return has("(*UTF") && (ignoreCase || (has("(?") && has("i"))) &&
         std::count(pattern.begin(), pattern.end(), '-') > maxRanges;
}

// Null if the pattern is too large and `mayBeTooLarge`. Throws PatternError on
// any other failure.
Pcre2Code compiled(std::string const& pattern, bool ignoreCase,
                   std::uint32_t options, bool mayBeTooLarge) {
  if (foldsTooMuch(pattern, ignoreCase)) {
    throw PatternError("too many case-insensitive ranges");
  }
  std::unique_ptr<pcre2_compile_context,
                  Pcre2Free<pcre2_compile_context_free>> const
      context(required(pcre2_compile_context_create(nullptr)));
  pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
  pcre2_set_max_pattern_length(context.get(), kMaxPattern);
  int error = 0;
  PCRE2_SIZE offset = 0;
  Pcre2Code code(pcre2_compile(bytesOf(pattern), pattern.size(),
                               options | (ignoreCase ? PCRE2_CASELESS : 0U),
                               &error, &offset, context.get()));
  bool const isTooLarge = error == PCRE2_ERROR_PATTERN_TOO_LARGE ||
                          error == PCRE2_ERROR_PATTERN_TOO_COMPLICATED;
  if (!code && !(mayBeTooLarge && isTooLarge)) {
    fail(error, " at offset " + std::to_string(offset));
  }
  return code;
}

bool isShorter(std::string_view a, std::string_view b) {
  return a.size() < b.size();
}

struct Items {
  std::string_view pattern;
  std::size_t end = 0;  // of the last item
  std::vector<std::string_view> items;
};

// PCRE2 expands counted groups, so the same items come again: these are
// skipped.
extern "C" int addItem(pcre2_callout_enumerate_block* block, void* data) {
  auto* const all = static_cast<Items*>(data);
  if (block->pattern_position < all->end) return 0;
  if (block->pattern_position > all->end) return 1;
  if (block->next_item_length == 0) return 0;
  all->end += block->next_item_length;
  try {
    all->items.push_back(
        all->pattern.substr(block->pattern_position, block->next_item_length));
  } catch (std::bad_alloc const&) {
    return PCRE2_ERROR_NOMEMORY;
  }
  return 0;
}

// The JIT compiler caches the memory of freed code, even when its library is
// unloaded. Being constructed first, this is destroyed after all expressions.
struct JitMemory {
  ~JitMemory() { pcre2_jit_free_unused_memory(nullptr); }
} const jitMemory;

struct Watch {
  TimeBudget& budget;
  int& untilCheck;
  int interval;  // callouts
};

extern "C" int checkClock(pcre2_callout_block*, void* data) {
  auto* const watch = static_cast<Watch*>(data);
  if (--watch->untilCheck > 0) return 0;
  watch->untilCheck = watch->interval;
  return watch->budget.isSpent() ? PCRE2_ERROR_CALLOUT : 0;
}

}  // namespace

bool matchesCharacter(std::string_view item, char c, bool ignoreCase) {
  Pcre2Code const code = compiled(std::string(item), ignoreCase, 0, false);
  Pcre2MatchData const data(
      required(pcre2_match_data_create(kOffsetPairs, nullptr)));
  return pcre2_match(code.get(), bytesOf({&c, 1}), 1, 0, 0, data.get(),
                     nullptr) >= 0;
}

PlainExpression::PlainExpression(std::string const& pattern, bool ignoreCase,
                                 bool startOptimizations)
    : code_(compiled(pattern, ignoreCase,
                     PCRE2_NO_AUTO_CAPTURE |
                         (startOptimizations ? 0U : PCRE2_NO_START_OPTIMIZE),
                     false)),
      data_(required(pcre2_match_data_create(kOffsetPairs, nullptr))) {
  pcre2_jit_compile(code_.get(), PCRE2_JIT_COMPLETE);
}

PlainExpression::Answer PlainExpression::match(std::string_view text,
                                               std::size_t from) const {
  int const status = pcre2_jit_match(code_.get(), bytesOf(text), text.size(),
                                     from, 0, data_.get(), nullptr);
  if (status == PCRE2_ERROR_NOMATCH) return Answer::kNoMatch;
  return status < 0 ? Answer::kUnknown : Answer::kMatch;
}

// Callouts make the compiled pattern several times larger. A pattern that only
// fits without them is matched with a match limit instead.
TimedExpression::TimedExpression(std::string const& pattern, bool ignoreCase)
    : patternSize_(pattern.size()),
      hasVerbs_(pattern.find("(*") != std::string::npos ||
                pattern.find("\\G") != std::string::npos),
      code_(compiled(pattern, ignoreCase, PCRE2_AUTO_CALLOUT, true)),
      data_(required(pcre2_match_data_create(kOffsetPairs, nullptr))),
      context_(required(pcre2_match_context_create(nullptr))) {
  if (!code_) {
    hasCallouts_ = false;
    code_ = compiled(pattern, ignoreCase, 0, false);
  }
  longestItem_ = patternSize_;
  std::vector<std::string_view> const all = items(pattern);
  if (!all.empty()) {
    longestItem_ = std::max_element(all.begin(), all.end(), isShorter)->size();
  }
  pcre2_set_match_limit(context_.get(), UINT32_MAX);
  pcre2_set_depth_limit(context_.get(), UINT32_MAX);
  pcre2_set_heap_limit(context_.get(), kMaxHeap);
}

std::vector<std::string_view> TimedExpression::items(
    std::string_view pattern) const {
  Items all{pattern, 0, {}};
  int const status = pcre2_callout_enumerate(code_.get(), addItem, &all);
  if (status == PCRE2_ERROR_NOMEMORY) throw std::bad_alloc();
  if (status != 0 || all.end != pattern.size()) return {};
  return std::move(all.items);
}

bool TimedExpression::mayMatchEmpty() const {
  std::uint32_t may = 0;
  pcre2_pattern_info(code_.get(), PCRE2_INFO_MATCHEMPTY, &may);
  return may != 0;
}

bool TimedExpression::matches(std::string_view line, TimeBudget& budget) {
  int const status = line.size() > kMaxComparisons / (longestItem_ + 1)
                         ? PCRE2_ERROR_CALLOUT
                     : hasCallouts_ ? matchWithCallouts(line, budget)
                                    : matchWithMatchLimit(line, budget);
  if (status == PCRE2_ERROR_NOMATCH) return false;
  if (status == PCRE2_ERROR_CALLOUT) {
    throw PatternError("matching takes too long");
  }
  if (status < 0) fail(status, "");
  // \K may start a match after its end, where it lasts to the end of the line.
  PCRE2_SIZE const* const offsets = pcre2_get_ovector_pointer(data_.get());
  return offsets[0] != (offsets[0] > offsets[1] ? line.size() : offsets[1]);
}

int TimedExpression::match(std::string_view line, std::size_t start,
                           std::uint32_t options) const {
  return pcre2_match(code_.get(), bytesOf(line), line.size(), start, options,
                     data_.get(), context_.get());
}

int TimedExpression::matchWithCallouts(std::string_view line,
                                       TimeBudget& budget) {
  if (usesJitCode_ && !std::exchange(triedJitCode_, true)) {
    pcre2_jit_compile(code_.get(), PCRE2_JIT_COMPLETE);
  }
  Watch watch{budget, untilCheck_,
              static_cast<int>(std::clamp<std::size_t>(
                  kBytesPerCheck / (line.size() + 1) /
                      (1 + patternSize_ / kCheapPattern),
                  1, kCalloutsPerCheck))};
  untilCheck_ = std::min(untilCheck_, watch.interval);
  pcre2_set_callout(context_.get(), checkClock, &watch);
  int status = match(line, 0, 0);
  if (status == PCRE2_ERROR_JIT_STACKLIMIT && !stack_) {
    growJitStack();
    status = match(line, 0, 0);
  }
  return status == PCRE2_ERROR_JIT_STACKLIMIT ? match(line, 0, PCRE2_NO_JIT)
                                              : status;
}

// Matches one start offset at a time, so that the clock can be checked between
// them. Verbs and \G need the line as a whole, with a lower match limit.
int TimedExpression::matchWithMatchLimit(std::string_view line,
                                         TimeBudget& budget) {
  std::size_t frame = 0;
  pcre2_pattern_info(code_.get(), PCRE2_INFO_FRAMESIZE, &frame);
  std::size_t const step = frame + patternSize_ + line.size();
  std::size_t const starts = hasVerbs_ ? line.size() + 1 : 1;
  pcre2_set_match_limit(context_.get(), static_cast<std::uint32_t>(
                                            kWorkPerCheck / step / starts));
  int status = PCRE2_ERROR_NOMATCH;
  for (std::size_t start = 0;
       start <= line.size() && status == PCRE2_ERROR_NOMATCH; ++start) {
    if (budget.isSpent()) return PCRE2_ERROR_CALLOUT;
    if (hasVerbs_) return match(line, 0, PCRE2_NO_JIT);
    status = match(line, start, PCRE2_NO_JIT | PCRE2_ANCHORED);
  }
  return status;
}

void TimedExpression::growJitStack() {
  stack_.reset(
      required(pcre2_jit_stack_create(kFirstJitStack, kMaxJitStack, nullptr)));
  pcre2_jit_stack_assign(context_.get(), nullptr, stack_.get());
}

}  // namespace QorCliMatching
