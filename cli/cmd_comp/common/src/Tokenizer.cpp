#include "Tokenizer.h"

#include <Poco/RegularExpression.h>
#include <Poco/String.h>

#include <cctype>
#include <cstring>

#include "AutoCompleteTree.h"
#include "OperationTrace.h"

namespace QorCliUtilities {

std::string statefreeRegex(std::string const& pattern) {
  std::string result = pattern;
  Poco::replaceInPlace(result, "(", "(?:");
  return result;
}

std::string trimQuotes(std::string& s) {
  std::string::size_type const first = s.find_first_of('"');
  std::string::size_type const last = s.find_last_of('"');
  // Without a quote both are npos: the start wraps to 0, the length to the end.
  return s.substr(first + 1, last - 1);
}

namespace {

using Poco::RegularExpression;
using Match = RegularExpression::Match;

// Inside quoted text, a backslash and a quote are an escaped quote. The token
// has three forms: ordinary characters with quoted parts that may be left open
// at the end of the line, a quoted text, an open quote up to the end.
RegularExpression const equalsRegex(R"(\s*=\s*)");
RegularExpression const commaRegex(R"(\s*,\s*)");
RegularExpression const openBracketRegex(R"(\s*\[\s*)");
RegularExpression const closeBracketRegex(R"(\s*\]\s*)");
RegularExpression const tokenRegex(statefreeRegex(
    R"re(([^"\s]+("((\x5c")|[^"])*"?){0,1})+|"((\x5c")|[^"])*"|"((\x5c")|[^"])*)re"));
RegularExpression const quotedStringRegex(
    statefreeRegex(R"re("((\x5c")|[^"])*")re"));
RegularExpression const whitespaceRegex(R"(\s+)");

bool found(RegularExpression const& expression, std::string const& text,
           std::size_t from, Match& match) {
  return expression.match(text, from, match, 0) >= 1;
}

// Removes the white space around the punctuation of a part outside quotes.
std::string squeezed(std::string text) {
  int const all = RegularExpression::RE_GLOBAL;
  equalsRegex.subst(text, 0, "=", all);
  commaRegex.subst(text, 0, ",", all);
  openBracketRegex.subst(text, 0, "[", all);
  closeBracketRegex.subst(text, 0, "]", all);
  return text;
}

std::string squeezedPart(std::string const& part) {
  QOR_CLI_TRACE("Non-quoted-string part of command: '%s' ", part.c_str());
  std::string result = squeezed(part);
  QOR_CLI_TRACE("Modified non-quoted-string '%s' ", result.c_str());
  return result;
}

std::string squeezedOutsideQuotes(std::string const& s) {
  Match quoted;
  if (!found(quotedStringRegex, s, 0, quoted)) return squeezed(s);
  std::string result;
  std::size_t position = 0;
  do {
    std::string const text = s.substr(quoted.offset, quoted.length);
    QOR_CLI_TRACE("Found quoted string '%s' ", text.c_str());
    if (quoted.offset != position) {
      result += squeezedPart(s.substr(position, quoted.offset - position));
    }
    result += text;
    position = quoted.offset + quoted.length;
  } while (position < s.size() &&
           found(quotedStringRegex, s, position, quoted));
  if (position < s.size()) result += squeezedPart(s.substr(position));
  return result;
}

// Whether the text between a token's end and the next token is one gap.
bool gapIsWhitespace(std::string const& s, std::size_t offset,
                     std::size_t nextToken) {
  Match gap;
  return found(whitespaceRegex, s, offset, gap) &&
         gap.offset + gap.length == nextToken;
}

bool mayStandBeforeQuote(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0 ||
         (c != '\0' && std::strchr("=[,()>", c) != nullptr);
}

bool mayStandAfterQuote(char c) {
  return c != '\0' && std::strchr(" ,(])", c) != nullptr;
}

}  // namespace

bool AutoCompleteTree::tokenize(std::string const& line,
                                std::vector<std::string>& tokens,
                                IOutput&) const {
  OperationTrace const trace;
  std::string s = line;
  if (s.empty()) return trace.exitWith(true);
  Poco::trimInPlace(s);
  s = squeezedOutsideQuotes(s);
  std::size_t offset = 0;
  Match token;
  while (found(tokenRegex, s, offset, token)) {
    if (offset + 1 < s.size() && token.offset != offset &&
        !gapIsWhitespace(s, offset, token.offset)) {
      return trace.exitWith(false);
    }
    unsigned errorPosition = static_cast<unsigned>(token.offset);
    if (!validateToken(s, static_cast<unsigned>(token.offset),
                       static_cast<unsigned>(token.length), errorPosition)) {
      return trace.exitWith(false);
    }
    tokens.push_back(s.substr(token.offset, token.length));
    offset = token.offset + token.length;
    if (offset >= s.size()) break;
  }
  return trace.exitWith(true);
}

bool AutoCompleteTree::validateToken(std::string const& line,
                                     unsigned const& offset,
                                     unsigned const& length,
                                     unsigned& errorPosition) const {
  OperationTrace const trace;
  std::size_t const tokenEnd = std::size_t{offset} + length;
  std::size_t position = offset;
  Match quoted;
  while (found(quotedStringRegex, line, position, quoted)) {
    std::size_t const start = quoted.offset;
    std::size_t const end = start + quoted.length;
    if (end > tokenEnd) break;
    position = end;
    if (start != 0 && !mayStandBeforeQuote(line[start - 1])) {
      errorPosition = static_cast<unsigned>(start - 1);
      return trace.exitWith(false);
    }
    if (end < line.size() && !mayStandAfterQuote(line[end])) {
      errorPosition = static_cast<unsigned>(end);
      return trace.exitWith(false);
    }
  }
  return trace.exitWith(true);
}

}  // namespace QorCliUtilities
