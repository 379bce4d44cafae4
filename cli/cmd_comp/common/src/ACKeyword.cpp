#include "ACKeyword.h"

#include <Poco/String.h>
#include <Poco/StringTokenizer.h>

#include <algorithm>
#include <utility>

#include "Error.h"
#include "LowerCase.h"
#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

std::string quotedList(std::vector<std::string> const& tokens) {
  std::string list;
  for (std::string const& token : tokens) list += "'" + token + "' ";
  return list;
}

}  // namespace

// One call of autoComplete.
struct ACKeyword::Request {
  std::string typed;    // the word to complete, lower-cased
  bool emptyFirstWord;  // it is the first word of the line, and empty
  bool help;
  QorCliModeEnum_1T mode;
  QorCliCompletionToken_1T kind;  // of a candidate at this position
};

ACKeyword::ACKeyword(std::string const& keyword, std::string const& help,
                     std::set<unsigned> modes, bool potentialTerminalNode,
                     bool hidden, QorCliCompletionToken_1T completionToken,
                     bool splitAlternatives, bool offerWhenEmpty,
                     bool variantCompletion, bool requiresCursor,
                     bool forbidsCursor)
    : AutoCompleteNode(std::move(modes), VALIDATION_KEYWORD,
                       potentialTerminalNode, hidden),
      keyword_(lowerCased(keyword)),
      help_(help),
      splitAlternatives_(splitAlternatives),
      offerWhenEmpty_(offerWhenEmpty),
      requiresCursor_(requiresCursor),
      forbidsCursor_(forbidsCursor),
      variantCompletion_(variantCompletion),
      completionToken_(completionToken) {
  if (!splitAlternatives_) return;
  Poco::StringTokenizer const parts(keyword_, "|",
                                    Poco::StringTokenizer::TOK_TRIM);
  alternatives_.assign(parts.begin(), parts.end());
}

ACKeyword::ACKeyword(KeywordSettings const& settings)
    : ACKeyword(settings.keyword, settings.help, settings.modes,
                settings.potentialTerminalNode, settings.hidden,
                settings.completionToken, settings.splitAlternatives,
                settings.offerWhenEmpty, settings.variantCompletion,
                settings.requiresCursor, settings.forbidsCursor) {}

std::string ACKeyword::keyword() const {
  return OperationTrace().exitWith(keyword_);
}

std::string ACKeyword::toString() const {
  return OperationTrace().exitWith(keyword_);
}

std::string ACKeyword::toShortString() const {
  return OperationTrace().exitWith(keyword_);
}

bool ACKeyword::ignoreCase() const { return OperationTrace().exitWith(true); }

std::string ACKeyword::helpText(QorCliModeEnum_1T) const {
  return OperationTrace().exitWith(help_);
}

bool ACKeyword::isGhost(char const* cursor) {
  return OperationTrace().exitWith(cursor == nullptr || *cursor == '\0');
}

bool ACKeyword::existsForCursor(char const* cursor) const {
  if (!requiresCursor_ && !forbidsCursor_) return true;
  bool const ghost = isGhost(cursor);
  return !(requiresCursor_ && ghost) && !(forbidsCursor_ && !ghost);
}

bool ACKeyword::isMatch(CliApiContext& ctx,
                        std::vector<std::string> const& tokens,
                        unsigned& position, IOutput&, bool executing) {
  OperationTrace const trace([&tokens] { return quotedList(tokens); });
  if (position >= tokens.size()) {
    throw Error("isMatch keyword past end of token list", 0);
  }
  if (!isValidForMode(ctx.getMode())) {
    throw Error("isMatch keyword not valid for mode", 0);
  }
  if (!existsForCursor(ctx.getCursor())) return trace.exitWith(false);
  if (executing && validationType() == VALIDATION_NONE) {
    return trace.exitWith(true);
  }
  std::string const word = Poco::toLower(tokens[position]);
  ++position;
  if (!splitAlternatives_) return trace.exitWith(word == keyword_);
  return trace.exitWith(std::find(alternatives_.begin(), alternatives_.end(),
                                  word) != alternatives_.end());
}

int ACKeyword::autoComplete(CliApiContext& ctx,
                            std::vector<std::string> const& tokens,
                            std::string const&, unsigned& position, bool,
                            bool helpRequest,
                            std::vector<AutoCompleteResult>& results,
                            IOutput&) {
  OperationTrace const trace;
  if (position > tokens.size()) {
    throw Error("Autocomplete keyword past end of token list", 0);
  }
  if (position + std::size_t{1} < tokens.size()) {
    throw Error("Autocomplete keyword called on intermediate node", 0);
  }
  if (!isValidForMode(ctx.getMode())) {
    throw Error("Autocomplete keyword not valid for mode", 0);
  }
  if (!existsForCursor(ctx.getCursor()) || isHidden()) return trace.exitWith(0);

  Request request;
  request.kind =
      position < tokens.size() ? QOR_CLI_TOKEN_WORD : QOR_CLI_TOKEN_AFTER_LINE;
  request.help = helpRequest;
  request.mode = ctx.getMode();
  request.typed = Poco::toLower(extractToken(tokens, position));
  request.emptyFirstWord = request.typed.empty() &&
                           request.mode != QOR_CLI_MODE_EXEC && position < 2;
  if (splitAlternatives_) {
    offerAlternatives(request, results);
  } else if (variantCompletion_) {
    offerAsOption(keyword_, request, results);
  } else {
    offerKeyword(request, results);
  }
  return trace.exitWith(0);
}

void ACKeyword::offerAlternatives(
    Request const& request, std::vector<AutoCompleteResult>& results) const {
  for (std::string const& alternative : alternatives_) {
    if (alternative.empty() || alternative.front() != '-') continue;
    offerAsOption(alternative, request, results);
  }
}

void ACKeyword::offerAsOption(std::string const& text, Request const& request,
                              std::vector<AutoCompleteResult>& results) const {
  if (!match(text, request.typed)) return;
  if (request.emptyFirstWord && !request.help) return;
  addPossibility({QOR_CLI_SORT_OPTION, text}, text, helpText(request.mode),
                 completionToken_ == QOR_CLI_TOKEN_OPTION ? completionToken_
                                                          : request.kind,
                 results);
}

void ACKeyword::offerKeyword(Request const& request,
                             std::vector<AutoCompleteResult>& results) const {
  if (!match(keyword_, request.typed)) return;
  if (request.emptyFirstWord && !offerWhenEmpty_) return;
  addPossibility({QOR_CLI_SORT_COMMAND, keyword_}, keyword_,
                 "() " + helpText(request.mode) + "\nType: Command",
                 request.kind, results);
}

}  // namespace QorCliUtilities
