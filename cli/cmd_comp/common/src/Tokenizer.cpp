#include "Tokenizer.h"

#include <Poco/String.h>

#include <cctype>
#include <cstring>
#include <string_view>
#include <utility>

#include "AutoCompleteTree.h"
#include "OperationTrace.h"

// Three regular expressions define the words of a line: one for a word, one for
// quoted text, and one for blanks around punctuation. A backtracking engine
// would need stack linear in quoted text and time quadratic in a run of blanks,
// and the line comes from the operator. So this code computes their result
// directly, with constant stack and in linear time:
//
// - Quoted text extends from a quote to the next quote without a preceding
//   backslash. If all have one, the quantifier backtracks from the end of the
//   line, so the text ends at the last quote; if there is no other quote,
//   nothing is quoted.
// - A word that begins with an ordinary character extends to the next blank,
//   including quoted parts. A part whose closing quote is missing extends to
//   the end of the line, even across escaped quotes. After a quoted part, the
//   word only continues with an ordinary character.
// - A word that begins with a quote is the quoted text or, if the quote is the
//   last one of the line, the rest of the line.
// - A run of blanks next to punctuation is removed. One pass is enough for all
//   four punctuation characters, since removing a run does not change the
//   neighbours of another one.

namespace QorCliUtilities {

std::string statefreeRegex(std::string const& pattern) {
  OperationTrace const trace;
  std::string result = pattern;
  Poco::replaceInPlace(result, "(", "(?:");
  return trace.exitWith(std::move(result));
}

std::string trimQuotes(std::string& s) {
  OperationTrace const trace;
  std::string::size_type const first = s.find_first_of('"');
  std::string::size_type const last = s.find_last_of('"');
  // Without a quote both are npos: the start wraps to 0, the length to npos
  // - 1.
  return trace.exitWith(s.substr(first + 1, last - 1));
}

namespace {

constexpr std::size_t kNone = std::string::npos;

// A half-open range of indexes into a line.
struct Span {
  std::size_t begin;
  std::size_t end;
};

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isPunctuation(char c) {
  return c == '=' || c == ',' || c == '[' || c == ']';
}

// The index of the first unescaped quote after `open`, or kNone.
std::size_t closingQuote(std::string_view s, std::size_t open) {
  std::size_t quote = s.find('"', open + 1);
  while (quote != kNone && s[quote - 1] == '\\') quote = s.find('"', quote + 1);
  return quote;
}

// The quoted text that starts at the quote `open`; empty if it is the last one.
Span quotedAt(std::string_view s, std::size_t open) {
  std::size_t close = closingQuote(s, open);
  if (close == kNone) close = s.rfind('"');
  return {open, close == open ? open : close + 1};
}

// The first quoted text that starts in [from, to); empty if there is none.
Span firstQuoted(std::string_view s, std::size_t from, std::size_t to) {
  std::size_t const open = s.substr(0, to).find('"', from);
  return open == kNone ? Span{from, from} : quotedAt(s, open);
}

std::size_t endOfOrdinary(std::string_view s, std::size_t i) {
  while (i < s.size() && s[i] != '"' && !isBlank(s[i])) ++i;
  return i;
}

// The end of the word that starts at `i`, which is not a blank.
std::size_t endOfWord(std::string_view s, std::size_t i) {
  if (s[i] == '"') {
    Span const quoted = quotedAt(s, i);
    return quoted.begin == quoted.end ? s.size() : quoted.end;
  }
  while (i < s.size() && s[i] != '"' && !isBlank(s[i])) {
    i = endOfOrdinary(s, i);
    if (i == s.size() || s[i] != '"') break;
    std::size_t const close = closingQuote(s, i);
    i = close == kNone ? s.size() : close + 1;
  }
  return i;
}

// Appends `part` to `result`, except runs of blanks next to punctuation.
void appendSqueezed(std::string_view part, std::string& result) {
  std::size_t i = 0;
  while (i < part.size()) {
    std::size_t const run = i;
    while (i < part.size() && isBlank(part[i])) ++i;
    bool const touches = (run > 0 && isPunctuation(part[run - 1])) ||
                         (i < part.size() && isPunctuation(part[i]));
    if (!touches) result.append(part.substr(run, i - run));
    std::size_t const text = i;
    while (i < part.size() && !isBlank(part[i])) ++i;
    result.append(part.substr(text, i - text));
  }
}

void appendSqueezedPart(std::string_view part, std::string& result) {
  if (part.empty()) return;
  QOR_CLI_TRACE("Non-quoted-string part of command: '%s' ",
                std::string(part).c_str());
  std::size_t const begin = result.size();
  appendSqueezed(part, result);
  QOR_CLI_TRACE("Modified non-quoted-string '%s' ", result.c_str() + begin);
}

std::string squeezedOutsideQuotes(std::string_view s) {
  std::string result;
  result.reserve(s.size());
  std::size_t position = 0;
  Span quoted = firstQuoted(s, 0, s.size());
  if (quoted.begin == quoted.end) {
    appendSqueezed(s, result);
    return result;
  }
  while (quoted.begin != quoted.end) {
    std::string_view const text =
        s.substr(quoted.begin, quoted.end - quoted.begin);
    QOR_CLI_TRACE("Found quoted string '%s' ", std::string(text).c_str());
    appendSqueezedPart(s.substr(position, quoted.begin - position), result);
    result.append(text);
    position = quoted.end;
    quoted = firstQuoted(s, position, s.size());
  }
  appendSqueezedPart(s.substr(position), result);
  return result;
}

bool mayPrecedeQuote(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0 ||
         (c != '\0' && std::strchr("=[,()>", c) != nullptr);
}

bool mayFollowQuote(char c) {
  return c != '\0' && std::strchr(" ,(])", c) != nullptr;
}

}  // namespace

bool AutoCompleteTree::tokenize(std::string const& line,
                                std::vector<std::string>& tokens,
                                IOutput&) const {
  OperationTrace const trace;
  if (line.empty()) return trace.exitWith(true);
  std::string const s = squeezedOutsideQuotes(Poco::trim(line));
  std::size_t i = 0;
  while (true) {
    while (i < s.size() && isBlank(s[i])) ++i;
    if (i == s.size()) return trace.exitWith(true);
    std::size_t const end = endOfWord(s, i);
    auto errorPosition = static_cast<unsigned>(i);
    if (!validateToken(s, static_cast<unsigned>(i),
                       static_cast<unsigned>(end - i), errorPosition)) {
      return trace.exitWith(false);
    }
    tokens.push_back(s.substr(i, end - i));
    i = end;
  }
}

bool AutoCompleteTree::validateToken(std::string const& line,
                                     unsigned const& offset,
                                     unsigned const& length,
                                     unsigned& errorPosition) const {
  OperationTrace const trace;
  std::size_t const tokenEnd = std::size_t{offset} + length;
  Span quoted = firstQuoted(line, offset, tokenEnd);
  while (quoted.begin != quoted.end && quoted.end <= tokenEnd) {
    if (quoted.begin != 0 && !mayPrecedeQuote(line[quoted.begin - 1])) {
      errorPosition = static_cast<unsigned>(quoted.begin - 1);
      return trace.exitWith(false);
    }
    if (quoted.end < line.size() && !mayFollowQuote(line[quoted.end])) {
      errorPosition = static_cast<unsigned>(quoted.end);
      return trace.exitWith(false);
    }
    quoted = firstQuoted(line, quoted.end, tokenEnd);
  }
  return trace.exitWith(true);
}

}  // namespace QorCliUtilities
