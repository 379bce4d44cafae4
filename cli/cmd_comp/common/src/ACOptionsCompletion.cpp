#include <Poco/String.h>

#include "ACOptions.h"
#include "Error.h"
#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

constexpr char kSpace[] = "<space>";
constexpr char kSpaceHelp[] = "Enter space";
constexpr char kReturn[] = "<cr>";
constexpr char kReturnHelp[] = "Enter";

constexpr int kNothingToOffer = -1;

}  // namespace

// Adds the candidates for one request.
class ACOptions::Offer {
 public:
  Offer(Reading const& reading, Grammar const& grammar, bool endsWithSpace,
        bool helpRequest, std::vector<AutoCompleteResult>& results)
      : reading_(reading),
        grammar_(grammar),
        endsWithSpace_(endsWithSpace),
        helpRequest_(helpRequest),
        results_(results) {}

  // Returns 0 or kNothingToOffer.
  int make() const {
    switch (reading_.place) {
      case Reading::Place::kKeyword:
        if (endsWithSpace_ || !helpRequest_) next();
        return 0;
      case Reading::Place::kOption:
        reading_.form->takesValue ? optionWithValue() : option();
        return 0;
      case Reading::Place::kValue:
        value();
        return 0;
      case Reading::Place::kMissingValue:
        missingValue();
        return 0;
      case Reading::Place::kBegunOption:
        return begunOption();
      case Reading::Place::kArgument:
        argument();
        return 0;
      case Reading::Place::kInvalid:
        break;
    }
    return kNothingToOffer;
  }

 private:
  void add(OptionForm const& form, QorCliCompletionToken_1T token) const {
    addPossibility({QOR_CLI_SORT_OPTION, Poco::toLower(form.name)}, form.name,
                   form.helpText, token, results_);
  }

  void add(OptionForms const& forms, QorCliCompletionToken_1T token) const {
    for (auto const& [key, form] : forms) add(form, token);
  }

  void addValue(std::string const& typed,
                QorCliCompletionToken_1T token) const {
    reading_.option->value.offer(typed, token, results_);
  }

  void addSpace() const {
    addPossibility({QOR_CLI_SORT_LAST, kSpace}, kSpace, kSpaceHelp,
                   QOR_CLI_TOKEN_NEXT_WORD, results_);
  }

  // Offers "<cr>" if the line may end. Sorts like the last argument.
  void addReturn() const {
    if (!reading_.mayEnd) return;
    auto const& all = grammar_.arguments();
    addPossibility(
        {QOR_CLI_SORT_LAST,
         all.empty() ? kReturn : Poco::toLower(all.back().placeholder())},
        kReturn, kReturnHelp, QOR_CLI_TOKEN_NEXT_WORD, results_);
  }

  // Offers what may follow the line.
  void next() const {
    QorCliCompletionToken_1T const token =
        endsWithSpace_ ? QOR_CLI_TOKEN_NEXT_WORD : QOR_CLI_TOKEN_OPTION;
    add(reading_.remaining, token);
    if (reading_.next != nullptr) reading_.next->offer("", token, results_);
    addReturn();
  }

  void option() const {
    if (endsWithSpace_ || !helpRequest_) return next();
    add(*reading_.form, QOR_CLI_TOKEN_NEXT_WORD);
    addReturn();
  }

  void optionWithValue() const {
    if (endsWithSpace_) return addValue("", QOR_CLI_TOKEN_NEXT_WORD);
    if (!helpRequest_) return addValue("", QOR_CLI_TOKEN_OPTION);
    add(*reading_.form, QOR_CLI_TOKEN_NEXT_WORD);
  }

  void value() const {
    if (endsWithSpace_) return next();
    bool const isChoice = reading_.option->value.isChoice();
    isChoice || helpRequest_ ? addValue(reading_.word, QOR_CLI_TOKEN_NEXT_WORD)
                             : addSpace();
    addReturn();
  }

  void missingValue() const {
    bool const isChoice = reading_.option->value.isChoice();
    if (helpRequest_ && !isChoice) add(*reading_.form, QOR_CLI_TOKEN_NEXT_WORD);
    addValue(reading_.word, QOR_CLI_TOKEN_NEXT_WORD);
    if (!helpRequest_ && !isChoice) addSpace();
  }

  int begunOption() const {
    OptionForms const found =
        formsBeginningWith(reading_.remaining, reading_.word);
    bool const onlyDashes = reading_.word == "-" || reading_.word == "--";
    if (found.empty() && !onlyDashes) return kNothingToOffer;
    add(found, found.size() == 1 && !onlyDashes ? QOR_CLI_TOKEN_WORD
                                                : QOR_CLI_TOKEN_NEXT_WORD);
    addReturn();
    return 0;
  }

  void argument() const {
    if (endsWithSpace_) return next();
    reading_.argument->offer(reading_.word, QOR_CLI_TOKEN_NEXT_WORD, results_);
    addReturn();
  }

  Reading const& reading_;
  Grammar const& grammar_;
  bool endsWithSpace_;
  bool helpRequest_;
  std::vector<AutoCompleteResult>& results_;
};

void ACOptions::removeOption(OptionForms& forms, std::string const& word) {
  auto const used = forms.find(Poco::toLower(word));
  if (used == forms.end()) return;
  std::string const otherForm = used->second.otherForm;
  forms.erase(used);
  forms.erase(otherForm);
}

// A word typed as the value of an option does not use up an option.
OptionForms ACOptions::unusedForms(
    std::vector<WordRole> const& roles,
    std::vector<std::string> const& tokens) const {
  OptionForms remaining = grammar_.forms();
  for (std::size_t i = 0; i < roles.size(); ++i) {
    if (roles[i].isOption()) removeOption(remaining, tokens[i + 1]);
  }
  return remaining;
}

OptionForms ACOptions::formsBeginningWith(OptionForms const& forms,
                                          std::string const& word) {
  OptionForms found;
  for (auto const& [key, form] : forms) {
    if (Poco::icompare(key.substr(0, word.size()), word) == 0) {
      found.emplace(key, form);
    }
  }
  return found;
}

// The role of a word depends on all words before it. An invalid word leaves
// nothing to offer, except the last one, which may still be incomplete unless a
// blank follows it.
ACOptions::Reading ACOptions::read(std::vector<std::string> const& tokens,
                                   bool endsWithSpace, bool helpRequest) const {
  Reading reading;
  Arguments ignored;
  std::vector<WordRole> const roles = grammar_.roles(tokens);
  reading.remaining = unusedForms(roles, tokens);
  reading.next = grammar_.argumentBehind(roles);
  reading.mayEnd = !grammar_.parse(tokens, ignored);
  if (roles.empty()) {
    reading.mayEnd = reading.mayEnd && helpRequest;
    return reading;
  }
  bool const isValid = grammar_.accepts(
      roles, tokens, endsWithSpace ? roles.size() : roles.size() - 1);
  reading.place = isValid ? placeOf(roles.back(), tokens.back(), endsWithSpace)
                          : Reading::Place::kInvalid;
  reading.word = tokens.back();
  reading.option = roles.back().option;
  reading.form = grammar_.formNamed(
      roles.back().parameter == nullptr ? tokens.back() : roles.back().name);
  reading.argument = roles.back().parameter;
  return reading;
}

ACOptions::Reading::Place ACOptions::placeOf(WordRole const& role,
                                             std::string const& word,
                                             bool endsWithSpace) {
  if (role.isOption()) return Reading::Place::kOption;
  if (role.option != nullptr) {
    return role.parameter->accepts(word) ? Reading::Place::kValue
                                         : Reading::Place::kMissingValue;
  }
  if (!endsWithSpace && word.rfind('-', 0) == 0) {
    return Reading::Place::kBegunOption;
  }
  return role.parameter == nullptr ? Reading::Place::kInvalid
                                   : Reading::Place::kArgument;
}

int ACOptions::autoComplete(CliApiContext& context,
                            std::vector<std::string> const& tokens,
                            std::string const&, unsigned& pos,
                            bool endsWithSpace, bool helpRequest,
                            std::vector<AutoCompleteResult>& results,
                            IOutput&) {
  OperationTrace const trace;
  if (pos > tokens.size()) {
    throw Error("Autocomplete action Past end of token list", 0);
  }
  if (!isValidForMode(context.getMode())) {
    throw Error("Autocomplete action not valid for mode", 0);
  }
  Reading const reading = read(tokens, endsWithSpace, helpRequest);
  int const status =
      Offer(reading, grammar_, endsWithSpace, helpRequest, results).make();
  if (status == 0) ++pos;
  return trace.exitWith(status);
}

}  // namespace QorCliUtilities
