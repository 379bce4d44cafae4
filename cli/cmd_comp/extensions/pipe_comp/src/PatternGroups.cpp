#include "PatternGroups.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "JitExpression.h"

namespace QorCliPipe {
namespace {

// More copies than the library has room for in a pattern.
constexpr std::size_t kMostCopies = 65536;

// Longer than any pattern's length or limit.
constexpr std::size_t kMostLength = std::size_t{1} << 30;

struct Repetition {
  std::size_t least;
  std::size_t most;
  std::size_t end;  // behind it, in the pattern
};

std::size_t product(std::size_t a, std::size_t b, std::size_t most) {
  return a > most / std::max<std::size_t>(b, 1) ? most : a * b;
}

// Goes on behind the blanks at `i`, where a repetition may have some.
void skipBlanks(std::string_view pattern, std::size_t& i) {
  if (!JitExpression::kHasLooseRepetitions) return;
  i = std::min(pattern.find_first_not_of(" \t", i), pattern.size());
}

// The number at `i`, behind which it goes on; nothing where there is none.
std::optional<std::size_t> takeNumber(std::string_view pattern,
                                      std::size_t& i) {
  std::size_t number = 0;
  char const* const begin = pattern.data() + i;
  auto const [end, error] =
      std::from_chars(begin, pattern.data() + pattern.size(), number);
  if (end == begin) return std::nullopt;
  i += static_cast<std::size_t>(end - begin);
  return error == std::errc() ? std::min(number, kMostCopies) : kMostCopies;
}

// The repetition such as {2}, {2,} or {2,3} that begins at `i`, if one does.
std::optional<Repetition> repetitionAt(std::string_view pattern,
                                       std::size_t i) {
  skipBlanks(pattern, ++i);
  std::optional<std::size_t> const least = takeNumber(pattern, i);
  if (!least && !JitExpression::kHasLooseRepetitions) return std::nullopt;
  std::optional<std::size_t> most = least;
  skipBlanks(pattern, i);
  if (pattern.substr(i, 1) == ",") {
    skipBlanks(pattern, ++i);
    std::optional<std::size_t> const number = takeNumber(pattern, i);
    if (number) most = number;
    skipBlanks(pattern, i);
  }
  if (!most || pattern.substr(i, 1) != "}") return std::nullopt;
  return Repetition{least.value_or(0), *most, i + 1};
}

// Whether a group that begins with `rest` looks ahead or behind.
bool looksAround(std::string_view rest) {
  return rest.substr(0, 3) == "(?=" || rest.substr(0, 3) == "(?!" ||
         rest.substr(0, 4) == "(?<=" || rest.substr(0, 4) == "(?<!";
}

// Whether a repetition behind what `rest` begins with may repeat what is in
// front of it: behind other repetitions, and what means nothing, as blanks do
// under option x.
bool mayStandBeforeRepetition(std::string_view rest, bool hasWideBlanks) {
  constexpr std::string_view others = "*+? \t\n\v\f\r";
  bool const mayBeBlank =
      hasWideBlanks && static_cast<unsigned char>(rest[0]) >= 0x80;
  return others.find(rest[0]) != std::string_view::npos || mayBeBlank ||
         rest.substr(0, 2) == "\\E" || rest.substr(0, 4) == "\\Q\\E";
}

}  // namespace

PatternGroups::PatternGroups(std::string_view pattern)
    : pattern_(pattern),
      hasWideBlanks_(JitExpression::kHasLooseRepetitions &&
                     pattern.find("(*UTF") != std::string_view::npos) {
  parts_.push_back({0, 0, pattern.size()});
}

std::size_t PatternGroups::add(std::size_t parent, std::size_t begin) {
  parts_.push_back({parent, begin, pattern_.size()});
  return parts_.size() - 1;
}

void PatternGroups::end(std::size_t part, std::size_t end) {
  parts_[part].end = end;
  bool const isCopied = JitExpression::kCopiesWhatLooksAround ||
                        !looksAround(pattern_.substr(parts_[part].begin));
  last_ = isCopied ? part : 0;
  behind_ = end;
}

void PatternGroups::visit(std::size_t i) {
  if (last_ == 0 || i < behind_) return;
  if (pattern_[i] == '{') {
    repeat(i);
  } else if (!mayStandBeforeRepetition(pattern_.substr(i), hasWideBlanks_)) {
    last_ = 0;
  }
}

// All copies of a part are made when the pattern is compiled, those that need
// not occur each within the one before.
void PatternGroups::repeat(std::size_t i) {
  std::optional<Repetition> const repetition = repetitionAt(pattern_, i);
  if (!repetition) {
    last_ = 0;
    return;
  }
  Part& part = parts_[last_];
  std::size_t const copies = std::max(repetition->least, repetition->most);
  part.copies =
      product(part.copies, std::max<std::size_t>(copies, 1), kMostCopies);
  part.nested += copies - std::min(repetition->least, copies);
  behind_ = repetition->end;
  hasCopies_ = hasCopies_ || copies > 1;
}

void PatternGroups::finish() {
  for (Part& part : parts_) part.length = part.end - part.begin;
  for (std::size_t i = 1; i < parts_.size(); ++i) {
    Part& part = parts_[i];
    Part const& parent = parts_[part.parent];
    part.allCopies = product(parent.allCopies, part.copies, kMostCopies);
    std::size_t const around =
        part.parent == 0 ? 0 : parent.level + 1 + parent.nested;
    part.level = around;
    part.deepest = around + 1 + part.nested;
  }
  for (std::size_t i = parts_.size() - 1; i > 0; --i) {
    Part const& part = parts_[i];
    Part& parent = parts_[part.parent];
    std::size_t const added =
        product(part.length, part.copies - 1, kMostLength);
    parent.length +=
        std::min(added + part.length - (part.end - part.begin),
                 kMostLength - std::min(parent.length, kMostLength));
    parent.deepest = std::max(parent.deepest, part.deepest);
  }
}

}  // namespace QorCliPipe
