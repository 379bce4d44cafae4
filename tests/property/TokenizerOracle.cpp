#include "TokenizerOracle.h"

#include <Poco/RegularExpression.h>
#include <Poco/String.h>

#include <cctype>

#include "Tokenizer.h"

namespace qor_test {
namespace {

using Poco::RegularExpression;
using QorCliUtilities::statefreeRegex;
using Match = RegularExpression::Match;

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

std::string normalised(std::string part) {
  equalsRegex.subst(part, 0, "=", RegularExpression::RE_GLOBAL);
  commaRegex.subst(part, 0, ",", RegularExpression::RE_GLOBAL);
  openBracketRegex.subst(part, 0, "[", RegularExpression::RE_GLOBAL);
  closeBracketRegex.subst(part, 0, "]", RegularExpression::RE_GLOBAL);
  return part;
}

std::string normalisedOutsideQuotes(std::string const& s) {
  std::string result;
  std::size_t position = 0;
  Match m;
  while (position < s.size() && found(quotedStringRegex, s, position, m)) {
    result += normalised(s.substr(position, m.offset - position));
    result += s.substr(m.offset, m.length);
    position = m.offset + m.length;
  }
  return result + normalised(s.substr(position));
}

bool quotesStandAlone(std::string const& line, std::size_t offset,
                      std::size_t length) {
  std::string const before = "=[,()>";
  std::string const after = " ,(])";
  std::size_t position = offset;
  Match m;
  while (found(quotedStringRegex, line, position, m)) {
    std::size_t const end = m.offset + m.length;
    if (end > offset + length) return true;
    position = end;
    if (m.offset != 0) {
      char const c = line[m.offset - 1];
      if (!std::isspace(static_cast<unsigned char>(c)) &&
          before.find(c) == std::string::npos) {
        return false;
      }
    }
    if (end < line.size() && after.find(line[end]) == std::string::npos) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool operator==(Tokenized const& a, Tokenized const& b) {
  return a.accepted == b.accepted && a.tokens == b.tokens;
}

Tokenized tokenizedByExpressions(std::string const& line) {
  Tokenized result{true, {}};
  std::string const s = normalisedOutsideQuotes(Poco::trim(line));
  std::size_t offset = 0;
  Match token;
  while (offset < s.size() && found(tokenRegex, s, offset, token)) {
    Match gap;
    bool const gapIsBlank = token.offset == offset || offset + 1 >= s.size() ||
                            (found(whitespaceRegex, s, offset, gap) &&
                             gap.offset + gap.length == token.offset);
    if (!gapIsBlank || !quotesStandAlone(s, token.offset, token.length)) {
      result.accepted = false;
      return result;
    }
    result.tokens.push_back(s.substr(token.offset, token.length));
    offset = token.offset + token.length;
  }
  return result;
}

}  // namespace qor_test
