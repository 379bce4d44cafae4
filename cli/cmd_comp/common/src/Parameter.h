#ifndef QOR_CLI_PARAMETER_H
#define QOR_CLI_PARAMETER_H

#include <limits>
#include <string>
#include <vector>

#include "AutoCompleteResult.h"

namespace QorCliUtilities {

// A word that the operator chooses: any text, a number, or one of some words.
// It is the value of an option or an argument of a command (Grammar.h), or a
// word of a path (ACParameter.h).
//
// A plain value. Different objects may be used by different threads.
class Parameter {
 public:
  // No parameter, which accepts no word: the value of an option without one.
  Parameter() = default;

  // `placeholder` is what is shown in place of the word, in angle brackets, and
  // the name of the parameter: "<pattern>". `help` is shown beside it.

  // Any word.
  static Parameter text(std::string placeholder, std::string help);

  // Decimal digits, from `lowest` to `highest`, both inclusive. A number above
  // 4294967295 is read as 4294967295. Throws Error when `lowest` is above
  // `highest`.
  static Parameter number(
      std::string placeholder, std::string help, unsigned lowest = 0,
      unsigned highest = std::numeric_limits<unsigned>::max());

  // One of `words`, in any letter case. Each is offered with `help`. Throws
  // Error when there is none, or an empty one.
  static Parameter choice(std::string placeholder, std::string help,
                          std::vector<std::string> words);

  // A copy of the parameter that may be left out. For arguments only: an option
  // that takes a value always needs it.
  Parameter optional() const;

  bool exists() const { return kind_ != Kind::kNone; }
  bool isChoice() const { return kind_ == Kind::kChoice; }
  bool isRequired() const { return required_; }
  std::string const& placeholder() const { return placeholder_; }

  // Whether `word`, as it was typed, can stand for the parameter.
  bool accepts(std::string const& word) const;

  // The value of `word`, which is accepted: a text without its quotes, a choice
  // as `words` writes it, the digits of a number as typed.
  std::string value(std::string word) const;

  // The message about a word that is not accepted, without a line feed. `name`
  // is the option as typed, or the placeholder.
  std::string refusal(std::string const& word, std::string const& name) const;

  // Appends candidates for `typed`, a word that has been begun or an empty one:
  // the choices that begin with it, or the placeholder. They are of the kind
  // `token`, but the only choice left for a word that has been begun is of the
  // kind QOR_CLI_TOKEN_WORD, which completes it.
  void offer(std::string const& typed, QorCliCompletionToken_1T token,
             std::vector<AutoCompleteResult>& results) const;

 private:
  enum class Kind { kNone, kText, kNumber, kChoice };

  Parameter(Kind kind, std::string placeholder, std::string help);
  std::string const* choiceNamed(std::string const& word) const;

  Kind kind_ = Kind::kNone;
  std::string placeholder_;
  std::string help_;
  bool required_ = true;
  unsigned lowest_ = 0;
  unsigned highest_ = 0;
  std::vector<std::string> words_;
};

// Whether `text` is a number: decimal digits only. An empty text is one, and
// reads as 0.
bool isDecimalNumber(std::string const& text);

// The value of a number; 4294967295 for a larger one.
unsigned decimalNumber(std::string const& digits);

}  // namespace QorCliUtilities

#endif
