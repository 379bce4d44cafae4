#include "PatternTraits.h"

#include <algorithm>
#include <initializer_list>

namespace QorCliPipe {
namespace {

// Between two steps, a longer pattern may look at as many characters.
constexpr std::size_t kLongPattern = 200;  // bytes

using Marks = std::initializer_list<std::string_view>;

bool hasAny(std::string_view pattern, Marks marks) {
  return std::any_of(marks.begin(), marks.end(), [&](std::string_view mark) {
    return pattern.find(mark) != std::string_view::npos;
  });
}

// Whether a group that begins with `mark` may match more than a few characters:
// it holds a repetition, or groups that may.
bool hasLongGroup(std::string_view pattern, std::string_view mark) {
  std::size_t begin = pattern.find(mark);
  while (begin != std::string_view::npos) {
    begin += mark.size();
    std::size_t const end = pattern.find_first_of(")(*+{\\", begin);
    if (end == std::string_view::npos || pattern[end] != ')') return true;
    begin = pattern.find(mark, end);
  }
  return false;
}

// Whether `pattern` ends with a group or a reference to one, by its number.
bool endsGroup(std::string_view pattern) {
  if (pattern.back() == ')') return true;
  bool const digit = pattern.back() >= '1' && pattern.back() <= '9';
  return digit && pattern.size() > 1 && pattern[pattern.size() - 2] == '\\';
}

bool hasEmptyAlternative(std::string_view pattern) {
  return hasAny(pattern, {"||", "|)", "(|", ":|", ">|", "(?|"});
}

bool hasNumberOfThreeDigits(std::string_view pattern) {
  std::size_t digits = 0;
  for (char const c : pattern) {
    digits = c >= '0' && c <= '9' ? digits + 1 : 0;
    if (digits == 3) return true;
  }
  return false;
}

// Whether a character, or a class of them, may be repeated a hundred times or
// without end. What follows a group repeats that, and such repetitions are
// steps.
bool repeatsCharacters(std::string_view pattern) {
  for (std::size_t i = 1; i < pattern.size(); ++i) {
    bool const repetition = pattern[i] == '*' || pattern[i] == '+';
    if (repetition && !endsGroup(pattern.substr(0, i))) return true;
  }
  return hasAny(pattern, {",}"}) || hasNumberOfThreeDigits(pattern);
}

// The pattern behind the options that say nothing of where a match begins.
std::string_view withoutHarmlessOptions(std::string_view pattern) {
  Marks const options = {"(*UTF8)", "(*UTF)", "(*UCP)", "(*NO_START_OPT)"};
  while (true) {
    auto const option = std::find_if(
        options.begin(), options.end(), [&](std::string_view text) {
          return pattern.substr(0, text.size()) == text;
        });
    if (option == options.end()) return pattern;
    pattern.remove_prefix(option->size());
  }
}

}  // namespace

bool callsGroups(std::string_view pattern) {
  return hasAny(pattern,
                {"(?R", "(?&", "(?P>", "\\g", "(?0", "(?1", "(?2", "(?3", "(?4",
                 "(?5", "(?6", "(?7", "(?8", "(?9", "(?+", "(?-"});
}

bool machineCodeAgrees(std::string_view pattern) {
  return !hasAny(pattern, {"(*", ")?+", ")*+", ")++", "}+", "\\k", "(?P="}) &&
         !callsGroups(pattern) &&
         !(hasLongGroup(pattern, "(?>") && hasEmptyAlternative(pattern));
}

bool stepsMayBeLong(std::string_view pattern) {
  return pattern.size() > kLongPattern || repeatsCharacters(pattern) ||
         callsGroups(pattern) ||
         hasAny(pattern, {"(?(", "?+", "*+", "++", "}+", "(*", "\\X"}) ||
         hasLongGroup(pattern, "(?>") || hasLongGroup(pattern, "(?=") ||
         hasLongGroup(pattern, "(?!") || hasLongGroup(pattern, "(?<=") ||
         hasLongGroup(pattern, "(?<!");
}

bool mayFoldRanges(std::string_view pattern, bool ignoreCase) {
  return hasAny(pattern, {"(*UTF", "(*UCP"}) &&
         (ignoreCase || (hasAny(pattern, {"(?"}) && hasAny(pattern, {"i"})));
}

bool beginningsAreIndependent(std::string_view pattern) {
  return !hasAny(withoutHarmlessOptions(pattern), {"(*", "\\G"});
}

}  // namespace QorCliPipe
