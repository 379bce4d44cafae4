#include "ACFilterOptions.h"

#include <utility>

#include "FilterArguments.h"
#include "OperationTrace.h"

namespace QorCliPipe {

using QorCliUtilities::OperationTrace;

ACFilterOptions::ACFilterOptions(std::set<unsigned> modes,
                                 QorCliUtilities::Validation_Type validation,
                                 bool potentialTerminalNode)
    : ACOptions(filterGrammar(), std::move(modes), validation,
                potentialTerminalNode),
      options_(grammar().forms()) {}

bool ACFilterOptions::isLastMultiTokenElement(
    QorCliUtilities::CliApiContext&) const {
  return OperationTrace().exitWith(false);
}

bool ACFilterOptions::isNumber(std::string const& text) {
  OperationTrace const trace;
  return trace.exitWith(QorCliUtilities::isDecimalNumber(text));
}

// Any word that is a form of an option uses it up, even as the pattern. The
// role of a number depends on the word before it.
ACFilterOptions::Reading ACFilterOptions::read(
    std::vector<std::string> const& tokens, bool, bool helpRequest) const {
  using Place = Reading::Place;
  Reading reading;
  reading.argument = reading.next = &grammar().arguments().front();
  reading.remaining = options_;
  if (tokens.size() < 2) return reading;
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    removeOption(reading.remaining, tokens[i]);
  }
  std::string const& beforeLast = tokens[tokens.size() - 2];
  bool const numberTyped = QorCliUtilities::isDecimalNumber(tokens.back());
  reading.word = numberTyped ? beforeLast : tokens.back();
  reading.form = grammar().formNamed(reading.word);
  reading.option = grammar().optionNamed(reading.word);
  if (reading.form != nullptr) {
    reading.place = numberTyped && reading.form->takesValue ? Place::kValue
                                                            : Place::kOption;
    return reading;
  }
  reading.form = grammar().formNamed(beforeLast);
  reading.option = grammar().optionNamed(beforeLast);
  if (reading.form != nullptr && reading.form->takesValue) {
    reading.place = Place::kMissingValue;
    return reading;
  }
  if (reading.word.rfind('-', 0) == 0 ||
      !formsBeginningWith(reading.remaining, reading.word).empty()) {
    reading.place = Place::kBegunOption;
    return reading;
  }
  reading.place = Place::kArgument;
  reading.remaining.clear();
  if (!helpRequest) reading.next = nullptr;
  reading.mayEnd = !helpRequest;
  return reading;
}

}  // namespace QorCliPipe
