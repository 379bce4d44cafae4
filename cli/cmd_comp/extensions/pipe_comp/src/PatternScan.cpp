#include "PatternScan.h"

#include <algorithm>
#include <optional>

namespace QorCliPipe {
namespace {

using Texts = std::vector<std::string_view>;

constexpr std::size_t kNowhere = std::string_view::npos;

// In place of an index behind something: the library refuses it, for it has no
// end; it is hard to read.
constexpr std::size_t kRefused = kNowhere;
constexpr std::size_t kHardToRead = kNowhere - 1;

constexpr std::string_view kUpperCase = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kClassName = "^abcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kOptions =
    "^-ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

bool beginsWith(std::string_view pattern, std::size_t i,
                std::string_view mark) {
  return pattern.substr(i, mark.size()) == mark;
}

bool beginsWithOneOf(std::string_view pattern, std::size_t i,
                     Texts const& marks) {
  return std::any_of(marks.begin(), marks.end(), [&](std::string_view mark) {
    return beginsWith(pattern, i, mark);
  });
}

// The index behind the first `mark` from `begin` on; kRefused without one.
std::size_t behindFirst(std::string_view pattern, std::size_t begin,
                        std::string_view mark) {
  std::size_t const found = pattern.find(mark, begin);
  return found == kNowhere ? kRefused : found + mark.size();
}

// The index behind the escape at `i`, which may be behind the pattern's end.
std::size_t behindEscape(std::string_view pattern, std::size_t i) {
  if (beginsWith(pattern, i, "\\c")) return i + 3;
  if (!beginsWith(pattern, i, "\\Q")) return i + 2;
  return std::min(behindFirst(pattern, i + 2, "\\E"), pattern.size());
}

// The index behind the "[" at `i` in a class, or behind the named class that
// begins there, such as [:alpha:].
std::size_t behindBracket(std::string_view pattern, std::size_t i) {
  if (!beginsWith(pattern, i, "[:")) return i + 1;
  std::size_t const end =
      std::min(pattern.find_first_not_of(kClassName, i + 2), pattern.size());
  return beginsWith(pattern, end, ":]") ? end + 2 : i + 1;
}

// The index of the first character in the class that begins at `i`.
std::size_t firstInClass(std::string_view pattern, std::size_t i) {
  bool isNegated = false;
  for (++i;;) {
    if (beginsWith(pattern, i, "\\E")) {
      i += 2;
    } else if (beginsWith(pattern, i, "\\Q\\E")) {
      i += 4;
    } else if (beginsWith(pattern, i, "^") && !isNegated) {
      isNegated = true;
      ++i;
    } else {
      return i;
    }
  }
}

// Whether the first character in the class that begins at `i` is a blank.
bool beginsWithBlank(std::string_view pattern, std::size_t i) {
  std::size_t const first = firstInClass(pattern, i);
  return beginsWith(pattern, first, " ") || beginsWith(pattern, first, "\t");
}

// The index behind the class that begins at `i`, or kRefused.
std::size_t behindClass(std::string_view pattern, std::size_t i) {
  constexpr std::string_view beginOfWord = "[[:<:]]";
  constexpr std::string_view endOfWord = "[[:>:]]";
  if (beginsWith(pattern, i, beginOfWord) ||
      beginsWith(pattern, i, endOfWord)) {
    return i + beginOfWord.size();
  }
  i = firstInClass(pattern, i);
  if (beginsWith(pattern, i, "]")) ++i;
  while (i < pattern.size() && pattern[i] != ']') {
    if (pattern[i] == '\\') {
      i = behindEscape(pattern, i);
    } else {
      i = pattern[i] == '[' ? behindBracket(pattern, i) : i + 1;
    }
  }
  return i < pattern.size() ? i + 1 : kRefused;
}

// The index behind the class of classes, such as (?[ [a-z] - [x] ]), that
// begins at `i`, or kRefused; kHardToRead with a blank in front in one of them,
// which is left out.
std::size_t behindClasses(std::string_view pattern, std::size_t i) {
  i += std::string_view("(?[").size();
  while (i < pattern.size() && pattern[i] != ']') {
    if (pattern[i] == '\\') {
      i = behindEscape(pattern, i);
    } else if (pattern[i] == '[') {
      std::size_t const behindName = behindBracket(pattern, i);
      if (beginsWithBlank(pattern, i)) return kHardToRead;
      i = behindName != i + 1 ? behindName : behindClass(pattern, i);
    } else {
      ++i;
    }
  }
  bool const isClosed = i < pattern.size() && beginsWith(pattern, i, "])");
  return isClosed ? i + 2 : kRefused;
}

// The index behind the callout, such as (?C), (?C12) or (?C'text'), that begins
// at `i`, or kRefused.
std::size_t behindCallout(std::string_view pattern, std::size_t i) {
  constexpr std::string_view opening = "`'\"^%#${";
  constexpr std::string_view closing = "`'\"^%#$}";
  i += std::string_view("(?C").size();
  std::size_t const kind = opening.find_first_of(pattern.substr(i, 1));
  if (kind == kNowhere) {
    i = std::min(pattern.find_first_not_of("0123456789", i), pattern.size());
  } else {
    // The closing mark twice is part of the text.
    std::string_view const mark = closing.substr(kind, 1);
    i = behindFirst(pattern, i + 1, mark);
    while (i != kRefused && beginsWith(pattern, i, mark)) {
      i = behindFirst(pattern, i + 1, mark);
    }
  }
  return i != kRefused && beginsWith(pattern, i, ")") ? i + 1 : kRefused;
}

// The index behind the comment, verb or the like that begins at `i`, or
// kRefused; `i` for any other group.
std::size_t behindMark(std::string_view pattern, std::size_t i) {
  if (beginsWith(pattern, i, "(?#")) return behindFirst(pattern, i, ")");
  if (beginsWith(pattern, i, "(?C")) return behindCallout(pattern, i);
  if (beginsWith(pattern, i, "(?[")) return behindClasses(pattern, i);
  if (!beginsWith(pattern, i, "(*")) return i;
  std::string_view const first = pattern.substr(i + 2, 1);
  bool const isVerb =
      first == ":" || kUpperCase.find_first_of(first) != kNowhere;
  return isVerb ? behindFirst(pattern, i, ")") : i;
}

// The texts that end a line for an option such as (*CR); nothing for any other.
std::optional<Texts> newlinesFor(std::string_view option, bool isUtf8) {
  if (option == "CR") return Texts{"\r"};
  if (option == "LF") return Texts{"\n"};
  if (option == "CRLF") return Texts{"\r\n"};
  if (option == "ANYCRLF") return Texts{"\r", "\n"};
  if (option == "NUL") return Texts{};
  if (option != "ANY") return std::nullopt;
  if (!isUtf8) return Texts{"\n", "\v", "\f", "\r", "\x85"};
  return Texts{"\n",       "\v",           "\f",          "\r",
               "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};
}

// The texts that end a line in the pattern: as the last of the options at its
// beginning has it.
Texts newlinesOf(std::string_view pattern) {
  std::string_view const beginning = "(*";
  std::string_view chosen;
  bool isUtf8 = false;
  while (beginsWith(pattern, 0, beginning)) {
    std::string_view const option =
        pattern.substr(beginning.size(), pattern.find(')') - beginning.size());
    isUtf8 = isUtf8 || option == "UTF8" || option == "UTF";
    if (newlinesFor(option, isUtf8)) chosen = option;
    pattern.remove_prefix(
        std::min(behindFirst(pattern, 0, ")"), pattern.size()));
  }
  return newlinesFor(chosen, isUtf8).value_or(Texts{"\n"});
}

}  // namespace

PatternScan::PatternScan(std::string_view pattern)
    : pattern_(pattern), newlines_(newlinesOf(pattern)) {
  leaveOut();
}

void PatternScan::advance() {
  char const c = pattern_[position_];
  if (c == '(') openGroup();
  if (c == ')') closeGroup();
  bool const isEscape = isSure_ && c == '\\';
  position_ = isEscape ? behindEscape(pattern_, position_) : position_ + 1;
  leaveOut();
}

// What a group such as (?x) sets holds behind it, too.
void PatternScan::openGroup() {
  std::size_t const begin = position_ + 2;
  bool const mayHaveOptions = beginsWith(pattern_, position_, "(?");
  std::size_t const end =
      mayHaveOptions ? pattern_.find_first_not_of(kOptions, begin) : kNowhere;
  bool const isExtendedBefore = isExtended_;
  bool const isSetting = end != kNowhere && pattern_[end] == ')';
  if (isSetting || (end != kNowhere && pattern_[end] == ':')) {
    setOptions(pattern_.substr(begin, end - begin));
  }
  extendedBehind_.push_back(isSetting ? isExtended_ : isExtendedBefore);
}

void PatternScan::setOptions(std::string_view options) {
  std::string_view const set = options.substr(0, options.find('-'));
  std::string_view const unset = options.substr(set.size());
  if (beginsWith(set, 0, "^")) isExtended_ = false;
  if (set.find('x') != kNowhere) isExtended_ = true;
  if (unset.find('x') != kNowhere) isExtended_ = false;
  if (set.find('x') != set.rfind('x')) mayBeExtendedMore_ = true;
}

void PatternScan::closeGroup() {
  if (extendedBehind_.empty()) return;
  isExtended_ = extendedBehind_.back();
  extendedBehind_.pop_back();
}

void PatternScan::leaveOut() {
  while (isSure_ && !atEnd()) {
    std::size_t const behind = behindHidden();
    if (behind == position_) return;
    isRefused_ = behind == kRefused;
    isSure_ = !isRefused_ && behind != kHardToRead;
    if (isSure_) position_ = behind;
  }
}

// The index behind what is to be left out here, kRefused or kHardToRead; that
// of this place where nothing is.
std::size_t PatternScan::behindHidden() const {
  switch (pattern_[position_]) {
    case '[':
      // Some versions of the library leave out the blank.
      return mayBeExtendedMore_ && beginsWithBlank(pattern_, position_)
                 ? kHardToRead
                 : behindClass(pattern_, position_);
    case '(':
      return behindMark(pattern_, position_);
    case '#':
      return isExtended_ ? behindComment() : position_;
    default:
      return position_;
  }
}

std::size_t PatternScan::behindComment() const {
  std::size_t i = position_;
  while (i < pattern_.size() && !beginsWithOneOf(pattern_, i, newlines_)) ++i;
  return std::min(i + 1, pattern_.size());
}

}  // namespace QorCliPipe
