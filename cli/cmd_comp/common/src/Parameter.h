#ifndef QOR_CLI_PARAMETER_H
#define QOR_CLI_PARAMETER_H

#include <limits>
#include <string>
#include <vector>

#include "AutoCompleteResult.h"

namespace QorCliUtilities {

// A word that the operator chooses: any text, a number, or one of a list of
// words. It is the value of an option, an argument of a command (Grammar.h), or
// a word of a path (ACParameter.h).
//
// A plain value. Different objects may be used by different threads.
class Parameter {
 public:
  // Empty: accepts no word. The value of an option that takes none.
  Parameter() = default;

  // `placeholder` is the parameter's name, shown in place of the word, in angle
  // brackets: "<pattern>". `help` is shown beside it.

  // Any word.
  static Parameter text(std::string placeholder, std::string help);

  // A decimal number from `lowest` to `highest`, both inclusive. Numbers above
  // 4294967295 saturate there. Throws Error if `lowest` is above `highest`.
  static Parameter number(
      std::string placeholder, std::string help, unsigned lowest = 0,
      unsigned highest = std::numeric_limits<unsigned>::max());

  // One of `words`, in any letter case. Each is offered with `help`. Throws
  // Error if there are none, or one is empty.
  static Parameter choice(std::string placeholder, std::string help,
                          std::vector<std::string> words);

  // A copy of the parameter that may be omitted. Only for arguments: an option
  // that takes a value always requires it.
  Parameter optional() const;

  bool exists() const { return kind_ != Kind::kNone; }
  bool isChoice() const { return kind_ == Kind::kChoice; }
  bool isRequired() const { return required_; }
  std::string const& placeholder() const { return placeholder_; }

  // Whether `word`, as typed, is a valid value.
  bool accepts(std::string const& word) const;

  // The value of `word`, which is valid: a text without its quotes, a choice as
  // spelled in `words`, a number as typed.
  std::string value(std::string word) const;

  // The error message for an invalid word, without a line feed. `name` is the
  // option as typed, or the placeholder.
  std::string refusal(std::string const& word, std::string const& name) const;

  // Appends candidates for `typed`, which may be empty: the choices that begin
  // with it, or the placeholder. Their kind is `token`, except that the only
  // choice for a word that is not empty has the kind QOR_CLI_TOKEN_WORD, which
  // completes it.
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

// Whether `text` consists of decimal digits only. An empty text does, and has
// the value 0. Any thread.
bool isDecimalNumber(std::string const& text);

// The value of a decimal number, saturated at 4294967295. Any thread.
unsigned decimalNumber(std::string const& digits);

}  // namespace QorCliUtilities

#endif
