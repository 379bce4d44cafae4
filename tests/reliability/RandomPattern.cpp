#include "RandomPattern.h"

#include <iterator>

namespace qor_test {
namespace {

constexpr int kMaxDepth = 3;  // of nested groups
constexpr char kLineBytes[] = "aaabbbcABC01 _-.\t\v\r\xC3\xA4\xFF";

constexpr char const* kStarts[] = {"(*UTF8)",
                                   "(*NO_START_OPT)",
                                   "(*UCP)",
                                   "(*CRLF)",
                                   "(*ANYCRLF)",
                                   "(*BSR_ANYCRLF)",
                                   "(*NO_AUTO_POSSESS)",
                                   "(*UTF8)(*UCP)"};

constexpr char const* kOrdinary[] = {"a", "b", "c", "ab", "A", "0", "."};

constexpr char const* kAtoms[] = {
    "\\d",     "\\D",     "\\w",      "\\W",       "\\s",       "\\S",
    "\\h",     "\\H",     "\\R",      "\\N",       "\\X",       "\\b",
    "\\B",     "^",       "$",        "\\A",       "\\z",       "\\Z",
    "\\G",     "[ab]",    "[^a]",     "[a-c0]",    "[^\\w]",    "[[:alpha:]]",
    "[]a]",    "\\x61",   "\\x{62}",  "\\Qa.\\E",  "(?#c)",     "\\.",
    "(?i)",    "(?-i)",   "(?s)",     "(?m)",      "(?x)",      "(?U)",
    "\\1",     "\\2",     "\\g{-1}",  "\\g{1}",    "\\k<n>",    "(?P=n)",
    "(?R)",    "(?1)",    "(?2)",     "(?-1)",     "\\g<1>",    "(?&n)",
    "\\K",     "\\C",     "(*FAIL)",  "(*ACCEPT)", "(*COMMIT)", "(*PRUNE)",
    "(*SKIP)", "(*THEN)", "(*MARK:m)"};

constexpr char const* kOpenings[] = {
    "(",     "(",       "(?:",   "(?:",        "(?:",     "(?i:",  "(?>",
    "(?=",   "(?!",     "(?<=",  "(?<!",       "(?|",     "(?<n>", "(?P<n>",
    "(?(1)", "(?(?=a)", "(?(R)", "(?(DEFINE)", "(?(<n>)", "(?s-i:"};

constexpr char const* kQuantifiers[] = {
    "*",  "+",   "?",   "*?",    "+?",    "??",   "*+",     "++",
    "?+", "{2}", "{0}", "{1,2}", "{0,2}", "{2,}", "{1,3}?", "{0,3}+"};

constexpr char const* kCommonAtoms[] = {
    "a",          "b",      "c",      "ab",       "A",        "0",
    "1",          "-",      " ",      ".",        "\\d",      "\\w",
    "\\s",        "\\S",    "\\W",    "\\.",      "\\t",      "\\x61",
    "[ab]",       "[^a]",   "[]a]",   "[a-c0]",   "[\\w.-]",  "[\\d-z]",
    "[\\s]",      "[^\\s]", "[^\\w]", "[\\S\\d]", "\xC3\xA4", "\xE4",
    "[\xC4\xE4]", "^",      "$",      "\\b",      "\\B",      "[[:alpha:]]"};

constexpr char const* kCommonOpenings[] = {
    "(",   "(",   "(",   "(",   "(",   "(",   "(?:",  "(?:",
    "(?:", "(?:", "(?:", "(?:", "(?=", "(?!", "(?<=", "(?<!"};

constexpr char const* kCommonQuantifiers[] = {
    "*",   "+",   "?",     "*?",    "+?",   "??",
    "{2}", "{0}", "{1,2}", "{0,2}", "{2,}", "{1,3}?"};

}  // namespace

std::string RandomPattern::pattern() {
  std::string result;
  if (below(5) == 0) result = kStarts[below(std::size(kStarts))];
  result += alternatives(0);
  return below(20) == 0 ? spoiled(result) : result;
}

std::string RandomPattern::commonPattern() {
  return (below(12) == 0 ? "(?i)" : "") + commonAlternatives(0);
}

std::string RandomPattern::line() {
  std::string result(below(25), ' ');
  for (char& c : result) c = kLineBytes[below(std::size(kLineBytes) - 1)];
  return result;
}

std::size_t RandomPattern::below(std::size_t count) {
  return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
}

std::string RandomPattern::alternatives(int depth) {
  std::string result = sequence(depth);
  while (below(4) == 0) result += '|' + sequence(depth);
  return result;
}

std::string RandomPattern::sequence(int depth) {
  std::string result;
  for (std::size_t items = below(4); items != 0; --items) {
    result += item(depth);
    if (below(3) == 0) result += kQuantifiers[below(std::size(kQuantifiers))];
  }
  return result;
}

std::string RandomPattern::item(int depth) {
  std::size_t const kind = below(6);
  if (kind < 2 && depth < kMaxDepth) return group(depth + 1);
  if (kind == 2) return kAtoms[below(std::size(kAtoms))];
  return kOrdinary[below(std::size(kOrdinary))];
}

std::string RandomPattern::group(int depth) {
  return kOpenings[below(std::size(kOpenings))] + alternatives(depth) + ')';
}

std::string RandomPattern::commonAlternatives(int depth) {
  std::string result = commonSequence(depth);
  while (below(4) == 0) result += '|' + commonSequence(depth);
  return result;
}

std::string RandomPattern::commonSequence(int depth) {
  std::string result;
  for (std::size_t items = below(4); items != 0; --items) {
    if (depth < kMaxDepth && below(3) == 0) {
      result += kCommonOpenings[below(std::size(kCommonOpenings))] +
                commonAlternatives(depth + 1) + ')';
    } else {
      result += kCommonAtoms[below(std::size(kCommonAtoms))];
    }
    if (below(3) != 0) continue;
    result += kCommonQuantifiers[below(std::size(kCommonQuantifiers))];
  }
  return result;
}

// The pattern with a byte inserted or removed.
std::string RandomPattern::spoiled(std::string pattern) {
  constexpr char marks[] = "()[]{}*+?\\|^$<>:=!#-,0123456789QEPRCKxg";
  std::size_t const at = below(pattern.size() + 1);
  if (at < pattern.size() && below(2) == 0) {
    pattern.erase(at, 1);
  } else {
    pattern.insert(at, 1, marks[below(std::size(marks) - 1)]);
  }
  return pattern;
}

}  // namespace qor_test
