#ifndef QOR_CLI_GRAMMAR_H
#define QOR_CLI_GRAMMAR_H

#include <map>
#include <string>
#include <vector>

#include "Parameter.h"

namespace QorCliUtilities {

// An option of a command. A short form begins with one dash, a long form with
// two; one of them may be empty. Both may be typed in any letter case and are
// offered as spelled here.
struct Option {
  std::string shortForm;
  std::string longForm;
  std::string help;      // shown beside each form
  Parameter value = {};  // the value that must follow, if any
};

// A form of an option, as completion offers it.
struct OptionForm {
  std::string helpText;
  std::string otherForm;  // the key of the option's other form, if any
  std::string name;       // as offered: "-A", although the key is "-a"
  bool takesValue;        // a value must follow
  bool isLongForm;        // "--after", not "-A"
};

// The keys are the forms in lower case.
using OptionForms = std::map<std::string, OptionForm>;

// The role of a word in a command line. If both pointers are null, it is an
// unknown option or an excess argument.
struct WordRole {
  Option const* option = nullptr;        // the word is this option or its value
  Parameter const* parameter = nullptr;  // the word is a value of this
  // The parameter's name in messages: the option as typed, or the placeholder.
  std::string name = {};

  bool isOption() const { return option != nullptr && parameter == nullptr; }
  bool isArgument() const { return option == nullptr && parameter != nullptr; }
  // Whether the next word must be the option's value.
  bool awaitsValue() const { return isOption() && option->value.exists(); }
};

// Why a command line is rejected.
struct Problem {
  enum class Kind {
    kNone,
    kUnknownOption,
    kUnexpectedWord,
    kInvalidValue,
    kMissingValue,
    kMissingArgument,
  };
  Kind kind = Kind::kNone;
  std::string text = {};  // for the operator; names the word; no line feed

  explicit operator bool() const { return kind != Kind::kNone; }
};

class Grammar;

// The options and arguments of a command line. `name` is a form of an option or
// the placeholder of an argument, in any letter case; each function throws
// Error "No such parameter: <name>" if the grammar has none of that name. Must
// not outlive the grammar.
class Arguments {
 public:
  // Whether the option or the argument was typed.
  bool has(std::string const& name) const;

  // The value of the option or the argument, or `otherwise` if it was not
  // typed. The text of an option without a value is "". number() throws Error
  // "Not a number: <value>" if the value of a text parameter is not a number.
  std::string text(std::string const& name, std::string otherwise = "") const;
  unsigned number(std::string const& name, unsigned otherwise = 0) const;

 private:
  friend class Grammar;
  std::string const* find(std::string const& name) const;

  struct Typed {
    void const* what;  // the option or the argument in the grammar
    std::string value;
  };

  Grammar const* grammar_ = nullptr;
  std::vector<Typed> typed_;
};

// Whether `word`, quoted or not, begins with a dash and has more characters.
bool looksLikeOption(std::string word);

// The grammar of a command: the options and arguments that may follow its
// keyword. Options may come in any order, before, between and after the
// arguments, whose order is fixed. If an option is repeated, the last one wins.
//
// A command parses its line once per action, with the first chunk of its input.
//
// A word that looks like an option is never an argument. After an option with a
// value, any word is the value.
//
// Immutable, so usable by any number of threads. Returned pointers are valid as
// long as the grammar.
class Grammar {
 public:
  // Throws Error, which names the fault, if an option has no form or a form
  // without its dashes, two options share a form, two arguments share a
  // placeholder, an argument is an empty Parameter, or a required argument
  // follows an optional one.
  Grammar(std::vector<Option> options, std::vector<Parameter> arguments);
  Grammar(Grammar const&) = delete;
  Grammar& operator=(Grammar const&) = delete;

  std::vector<Parameter> const& arguments() const { return arguments_; }
  OptionForms const& forms() const { return forms_; }

  // Whether the keyword alone is a valid line.
  bool allowsNoWord() const;

  // The form `word`, in any letter case, and its option; null if there is none.
  OptionForm const* formNamed(std::string const& word) const;
  Option const* optionNamed(std::string const& word) const;

  // The roles of the words after tokens[0], the keyword, in order.
  std::vector<WordRole> roles(std::vector<std::string> const& tokens) const;

  // The first argument that is not among `roles`, or null.
  Parameter const* argumentBehind(std::vector<WordRole> const& roles) const;

  // Whether the first `count` words after tokens[0] are valid in their roles.
  bool accepts(std::vector<WordRole> const& roles,
               std::vector<std::string> const& tokens, std::size_t count) const;

  // Parses the words after tokens[0] into `arguments`. Returns the first
  // problem, if any; `arguments` then holds the words before it.
  Problem parse(std::vector<std::string> const& tokens,
                Arguments& arguments) const;

 private:
  friend class Arguments;
  void const* named(std::string const& name) const;
  void checkArguments() const;
  void addForm(Option const& option, std::string const& name,
               std::string const& otherForm);

  std::vector<Option> options_;
  std::vector<Parameter> arguments_;
  OptionForms forms_;
};

}  // namespace QorCliUtilities

#endif
