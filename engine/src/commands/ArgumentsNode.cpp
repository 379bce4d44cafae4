#include "commands/ArgumentsNode.h"

#include <utility>

namespace QorCliEngine {

using QorCliUtilities::AutoCompleteResult;
using QorCliUtilities::CliApiContext;
using QorCliUtilities::IOutput;

ArgumentsNode::ArgumentsNode(unsigned wordsBefore, Count count,
                             std::string placeholder, std::string help)
    : AutoCompleteNode({QOR_CLI_MODE_ANY}, QorCliUtilities::VALIDATION_KEYWORD,
                       true, false),
      wordsBefore_(wordsBefore),
      count_(count),
      placeholder_(std::move(placeholder)),
      help_(std::move(help)) {}

int ArgumentsNode::autoComplete(CliApiContext&,
                                std::vector<std::string> const& tokens,
                                std::string const&, unsigned& position,
                                bool endsWithSpace, bool helpRequest,
                                std::vector<AutoCompleteResult>& results,
                                IOutput&) {
  ++position;
  std::size_t const given =
      tokens.size() > wordsBefore_ ? tokens.size() - wordsBefore_ : 0;
  bool const typing = given != 0 && !endsWithSpace;
  bool const mayBegin = given == 0 || (endsWithSpace && count_ == Count::kMany);
  if (count_ == Count::kOne && given > 1) return 0;
  if (typing && !mayBeFirst(tokens[wordsBefore_])) return 0;
  bool const begins = mayBegin && endsWithSpace;
  if ((begins || typing) && !helpRequest) {
    offerWords(typing ? given - 1 : given, typing ? tokens.back() : "",
               results);
  }
  if (mayBegin || typing) {
    bool const follows = !endsWithSpace && !typing;
    offer(placeholder_, help_,
          follows ? QOR_CLI_TOKEN_AFTER_LINE : QOR_CLI_TOKEN_NEXT_WORD,
          results);
  }
  if (given != 0) offer("<cr>", "", QOR_CLI_TOKEN_OPTION, results);
  return 0;
}

bool ArgumentsNode::isMatch(CliApiContext&,
                            std::vector<std::string> const& tokens,
                            unsigned& position, IOutput&, bool) {
  if (position >= tokens.size()) return false;
  // The only word is completed as a word; the end of several is asked for by
  // saying so.
  atLastOfSeveral_ =
      position + std::size_t{1} == tokens.size() && position > wordsBefore_;
  ++position;
  return true;
}

bool ArgumentsNode::isMultiTokenNode() const { return true; }

bool ArgumentsNode::isLastMultiTokenElement(CliApiContext&) const {
  return atLastOfSeveral_;
}

void ArgumentsNode::resetNode(CliApiContext&) { atLastOfSeveral_ = false; }

std::string ArgumentsNode::toShortString() const { return placeholder_; }

bool ArgumentsNode::mayBeFirst(std::string const&) const { return true; }

void ArgumentsNode::offerWords(std::size_t, std::string const&,
                               std::vector<AutoCompleteResult>&) const {}

void ArgumentsNode::offer(std::string const& text, std::string const& help,
                          QorCliCompletionToken_1T token,
                          std::vector<AutoCompleteResult>& results) const {
  addPossibility({QOR_CLI_SORT_LAST, text}, text, help, token, results);
}

}  // namespace QorCliEngine
