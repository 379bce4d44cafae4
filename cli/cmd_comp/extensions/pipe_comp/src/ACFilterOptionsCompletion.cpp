#include <Poco/String.h>

#include "ACFilterOptions.h"
#include "Error.h"
#include "OperationTrace.h"

namespace QorCliPipe {
namespace {

using QorCliUtilities::AutoCompleteNode;
using QorCliUtilities::AutoCompleteResult;
using QorCliUtilities::Error;
using QorCliUtilities::OperationTrace;

using Option = ACFilterOptions::ACFilterOption;
using OptionTable = std::map<std::string, Option>;

constexpr char kPattern[] = "<pattern>";
constexpr char kPatternHelp[] = "The text used for pattern matching";
constexpr char kValue[] = "<value>";
constexpr char kValueHelp[] =
    "The value for number lines to be printed after leading / trailing context";
constexpr char kSpace[] = "<space>";
constexpr char kSpaceHelp[] = "Enter space";
constexpr char kReturn[] = "<cr>";
constexpr char kReturnHelp[] = "Enter";

constexpr int kNoSuchOption = -1;

bool equalIgnoringCase(std::string const& a, std::string const& b) {
  return Poco::icompare(a, b) == 0;
}

Option const* optionNamed(OptionTable const& table, std::string const& word) {
  for (auto const& [key, option] : table) {
    if (equalIgnoringCase(option.name, word)) return &option;
  }
  return nullptr;
}

// The options of which neither form stands among the typed words.
OptionTable unusedOptions(OptionTable const& table,
                          std::vector<std::string> const& tokens) {
  OptionTable remaining = table;
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    auto const used = remaining.find(Poco::toLower(tokens[i]));
    if (used == remaining.end()) continue;
    std::string const otherForm = used->second.otherForm;
    remaining.erase(used);
    remaining.erase(otherForm);
  }
  return remaining;
}

std::vector<Option> optionsBeginningWith(OptionTable const& table,
                                         std::string const& word) {
  std::vector<Option> found;
  for (auto const& [key, option] : table) {
    if (equalIgnoringCase(option.name.substr(0, word.size()), word)) {
      found.push_back(option);
    }
  }
  return found;
}

// One request, and what is offered in answer to it.
struct Offer {
  bool endsWithSpace;
  bool helpRequest;
  std::vector<AutoCompleteResult>& results;

  void option(Option const& row, QorCliCompletionToken_1T token) const {
    AutoCompleteNode::addPossibility(
        {QOR_CLI_SORT_OPTION, Poco::toLower(row.name)}, row.name, row.helpText,
        token, results);
  }

  void options(OptionTable const& table, QorCliCompletionToken_1T token) const {
    for (auto const& [key, row] : table) option(row, token);
  }

  // All placeholders are in lower case, as their keys are.
  void placeholder(char const* text, char const* help,
                   QorCliCompletionToken_1T token) const {
    AutoCompleteNode::addPossibility({QOR_CLI_SORT_LAST, text}, text, help,
                                     token, results);
  }

  void value(QorCliCompletionToken_1T token) const {
    placeholder(kValue, kValueHelp, token);
  }

  void space() const {
    placeholder(kSpace, kSpaceHelp, QOR_CLI_TOKEN_NEXT_WORD);
  }

  void pattern(QorCliCompletionToken_1T token) const {
    placeholder(kPattern, kPatternHelp, token);
  }

  // Sorts where the pattern does.
  void carriageReturn() const {
    AutoCompleteNode::addPossibility({QOR_CLI_SORT_LAST, kPattern}, kReturn,
                                     kReturnHelp, QOR_CLI_TOKEN_NEXT_WORD,
                                     results);
  }

  void optionsAndPattern(OptionTable const& table,
                         QorCliCompletionToken_1T token) const {
    options(table, token);
    pattern(token);
  }
};

// Nothing but the keyword has been typed.
void completeKeywordAlone(OptionTable const& table, Offer const& offer) {
  if (offer.endsWithSpace) {
    offer.optionsAndPattern(table, QOR_CLI_TOKEN_NEXT_WORD);
  } else if (!offer.helpRequest) {
    offer.optionsAndPattern(table, QOR_CLI_TOKEN_OPTION);
  }
}

// The word is an option that takes a number, which may have been typed behind
// it.
void completeOptionWithValue(Option const& option, bool numberTyped,
                             OptionTable const& remaining, Offer const& offer) {
  if (numberTyped && offer.endsWithSpace) {
    offer.optionsAndPattern(remaining, QOR_CLI_TOKEN_NEXT_WORD);
  } else if (numberTyped && !offer.helpRequest) {
    offer.space();
  } else if (numberTyped || offer.endsWithSpace) {
    offer.value(QOR_CLI_TOKEN_NEXT_WORD);
  } else if (offer.helpRequest) {
    offer.option(option, QOR_CLI_TOKEN_NEXT_WORD);
  } else {
    offer.value(QOR_CLI_TOKEN_OPTION);
  }
}

void completeOptionWithoutValue(Option const& option,
                                OptionTable const& remaining,
                                Offer const& offer) {
  if (offer.endsWithSpace) {
    offer.optionsAndPattern(remaining, QOR_CLI_TOKEN_NEXT_WORD);
  } else if (offer.helpRequest) {
    offer.option(option, QOR_CLI_TOKEN_NEXT_WORD);
  } else {
    offer.optionsAndPattern(remaining, QOR_CLI_TOKEN_OPTION);
  }
}

// The word stands where the number of `option` should.
void completeMissingValue(Option const& option, Offer const& offer) {
  if (offer.helpRequest) {
    offer.option(option, QOR_CLI_TOKEN_NEXT_WORD);
    offer.value(QOR_CLI_TOKEN_NEXT_WORD);
  } else {
    offer.value(QOR_CLI_TOKEN_NEXT_WORD);
    offer.space();
  }
}

void completePattern(Offer const& offer) {
  if (offer.helpRequest || !offer.endsWithSpace) {
    offer.pattern(QOR_CLI_TOKEN_NEXT_WORD);
  }
  if (!offer.helpRequest) offer.carriageReturn();
}

// The word is no option: the beginning of one, or the pattern.
int completeOtherWord(std::string const& word, OptionTable const& remaining,
                      Offer const& offer) {
  if (word == "-") {
    offer.options(remaining, QOR_CLI_TOKEN_NEXT_WORD);
    return 0;
  }
  if (word == "--") {
    for (auto const& [key, option] : remaining) {
      if (option.isLongForm) offer.option(option, QOR_CLI_TOKEN_NEXT_WORD);
    }
    return 0;
  }
  std::vector<Option> const found = optionsBeginningWith(remaining, word);
  if (found.empty()) {
    if (word.rfind('-', 0) == 0) return kNoSuchOption;
    completePattern(offer);
    return 0;
  }
  QorCliCompletionToken_1T const token =
      found.size() == 1 ? QOR_CLI_TOKEN_WORD : QOR_CLI_TOKEN_NEXT_WORD;
  for (Option const& option : found) offer.option(option, token);
  return 0;
}

int completeWords(OptionTable const& table,
                  std::vector<std::string> const& tokens, Offer const& offer) {
  OptionTable const remaining = unusedOptions(table, tokens);
  std::string const& beforeLast = tokens[tokens.size() - 2];
  bool const numberTyped = ACFilterOptions::isNumber(tokens.back());
  std::string const& word = numberTyped ? beforeLast : tokens.back();
  if (Option const* option = optionNamed(table, word)) {
    if (option->takesValue) {
      completeOptionWithValue(*option, numberTyped, remaining, offer);
    } else {
      completeOptionWithoutValue(*option, remaining, offer);
    }
    return 0;
  }
  Option const* previous = optionNamed(table, beforeLast);
  if (previous != nullptr && previous->takesValue) {
    completeMissingValue(*previous, offer);
    return 0;
  }
  return completeOtherWord(word, remaining, offer);
}

}  // namespace

int ACFilterOptions::autoComplete(QorCliUtilities::CliApiContext& context,
                                  std::vector<std::string> const& tokens,
                                  std::string const&, unsigned& pos,
                                  bool endsWithSpace, bool helpRequest,
                                  std::vector<AutoCompleteResult>& results,
                                  QorCliUtilities::IOutput&) {
  OperationTrace const trace;
  if (pos > tokens.size()) {
    throw Error("Autocomplete action Past end of token list", 0);
  }
  if (!isValidForMode(context.getMode())) {
    throw Error("Autocomplete action not valid for mode", 0);
  }
  Offer const offer{endsWithSpace, helpRequest, results};
  if (tokens.size() < 2) {
    completeKeywordAlone(options_, offer);
  } else if (int const status = completeWords(options_, tokens, offer);
             status != 0) {
    return trace.exitWith(status);
  }
  ++pos;
  return trace.exitWith(0);
}

}  // namespace QorCliPipe
