#include "Parameter.h"

#include <Poco/String.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "AutoCompleteNode.h"
#include "Error.h"
#include "Tokenizer.h"

namespace QorCliUtilities {
namespace {

std::string joined(std::vector<std::string> const& words) {
  std::string list;
  for (std::string const& word : words) {
    list += (list.empty() ? "" : ",") + word;
  }
  return list;
}

}  // namespace

bool isDecimalNumber(std::string const& text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return c >= '0' && c <= '9'; });
}

unsigned decimalNumber(std::string const& digits) {
  constexpr unsigned long long highest = std::numeric_limits<unsigned>::max();
  return static_cast<unsigned>(
      std::min(std::strtoull(digits.c_str(), nullptr, 10), highest));
}

Parameter::Parameter(Kind kind, std::string placeholder, std::string help)
    : kind_(kind),
      placeholder_(std::move(placeholder)),
      help_(std::move(help)) {}

Parameter Parameter::text(std::string placeholder, std::string help) {
  return {Kind::kText, std::move(placeholder), std::move(help)};
}

Parameter Parameter::number(std::string placeholder, std::string help,
                            unsigned lowest, unsigned highest) {
  if (lowest > highest) throw Error("Empty range: " + placeholder, 0);
  Parameter result(Kind::kNumber, std::move(placeholder), std::move(help));
  result.lowest_ = lowest;
  result.highest_ = highest;
  return result;
}

Parameter Parameter::choice(std::string placeholder, std::string help,
                            std::vector<std::string> words) {
  auto const isEmpty = [](std::string const& word) { return word.empty(); };
  if (words.empty() || std::any_of(words.begin(), words.end(), isEmpty)) {
    throw Error("Empty choice: " + placeholder, 0);
  }
  Parameter result(Kind::kChoice, std::move(placeholder), std::move(help));
  result.words_ = std::move(words);
  return result;
}

Parameter Parameter::optional() const {
  Parameter result = *this;
  result.required_ = false;
  return result;
}

std::string const* Parameter::choiceNamed(std::string const& word) const {
  auto const named = std::find_if(
      words_.begin(), words_.end(),
      [&](std::string const& each) { return Poco::icompare(each, word) == 0; });
  return named == words_.end() ? nullptr : &*named;
}

bool Parameter::accepts(std::string const& word) const {
  switch (kind_) {
    case Kind::kText:
      return true;
    case Kind::kNumber:
      return isDecimalNumber(word) && decimalNumber(word) >= lowest_ &&
             decimalNumber(word) <= highest_;
    case Kind::kChoice:
      return choiceNamed(word) != nullptr;
    case Kind::kNone:
      break;
  }
  return false;
}

std::string Parameter::value(std::string word) const {
  if (kind_ == Kind::kText) return trimQuotes(word);
  std::string const* const choice = choiceNamed(word);
  return choice == nullptr ? word : *choice;
}

std::string Parameter::refusal(std::string const& word,
                               std::string const& name) const {
  bool const isNumber = kind_ == Kind::kNumber;
  std::string const valid = isNumber
                                ? " in range : [" + std::to_string(lowest_) +
                                      "," + std::to_string(highest_) + "]"
                                : ": [" + joined(words_) + "]";
  return "Invalid value '" + word + "' for " + (isNumber ? "integer " : "") +
         "parameter '" + name + "'. Valid values are" + valid;
}

void Parameter::offer(std::string const& typed, QorCliCompletionToken_1T token,
                      std::vector<AutoCompleteResult>& results) const {
  if (kind_ != Kind::kChoice) {
    AutoCompleteNode::addPossibility(
        {QOR_CLI_SORT_LAST, Poco::toLower(placeholder_)}, placeholder_, help_,
        token, results);
    return;
  }
  std::size_t const first = results.size();
  for (std::string const& word : words_) {
    if (!AutoCompleteNode::match(word, typed)) continue;
    AutoCompleteNode::addPossibility({QOR_CLI_SORT_OPTION, Poco::toLower(word)},
                                     word, help_, token, results);
  }
  if (!typed.empty() && results.size() == first + 1) {
    results.back().token = QOR_CLI_TOKEN_WORD;
  }
}

}  // namespace QorCliUtilities
