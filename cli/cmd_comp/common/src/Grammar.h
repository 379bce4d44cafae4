#ifndef QOR_CLI_GRAMMAR_H
#define QOR_CLI_GRAMMAR_H

#include <map>
#include <string>
#include <vector>

#include "Parameter.h"

namespace QorCliUtilities {

// An option of a command. A short form begins with one dash, a long form with
// two; one of them may be empty. Both may be typed in any letter case and are
// offered as they are written here.
struct Option {
  std::string shortForm;
  std::string longForm;
  std::string help;
  Parameter value = {};  // the word that must follow, if there is one
};

// One written form of an option, as completion offers it.
struct OptionForm {
  std::string helpText;
  std::string otherForm;  // key of the same option's other form, if any
  std::string name;       // as offered: "-A", although its key is "-a"
  bool takesValue;        // a value must follow
  bool isLongForm;        // "--after", not "-A"
};

// By lower-case written form.
using OptionForms = std::map<std::string, OptionForm>;

// What a word of a command line is. With neither, it is an option that does not
// exist, or an argument too many.
struct WordRole {
  Option const* option = nullptr;  // the word is this option, or its value
  Parameter const* parameter = nullptr;  // the word is the value of this one
  // How messages name the parameter: the option as typed, or the placeholder.
  std::string name = {};

  bool isOption() const { return option != nullptr && parameter == nullptr; }
  bool isArgument() const { return option == nullptr && parameter != nullptr; }
  // Whether the value of the option must be the next word.
  bool awaitsValue() const { return isOption() && option->value.exists(); }
};

// Why the words of a command line are rejected.
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
  std::string text = {};  // for the operator; names the word, no line feed

  explicit operator bool() const { return kind != Kind::kNone; }
};

class Grammar;

// The options and the arguments of a command line, as they were typed. `name`
// is a form of an option or the placeholder of an argument, in any letter case;
// each function throws Error "No such parameter: <name>" when the grammar has
// no such name. Must not outlive the grammar.
class Arguments {
 public:
  // Whether the option or the argument was typed.
  bool has(std::string const& name) const;

  // The value of the option or the argument; `otherwise` when it was not typed.
  // The text of an option without a value is "". number() throws Error "Not a
  // number: <value>" when the value is not, as that of a text may be.
  std::string text(std::string const& name, std::string otherwise = "") const;
  unsigned number(std::string const& name, unsigned otherwise = 0) const;

 private:
  friend class Grammar;
  std::string const* find(std::string const& name) const;

  struct Typed {
    void const* what;  // the option or the argument, in the grammar
    std::string value;
  };

  Grammar const* grammar_ = nullptr;
  std::vector<Typed> typed_;
};

// Whether `word` begins with a dash, in quotes or not, and goes on.
bool looksLikeOption(std::string word);

// The table of a command's options and arguments, by which the words behind its
// keyword are read: options in any order, and the arguments in theirs, before,
// between and behind the options. Of an option that is typed more than once,
// the last counts.
//
// A command reads them once an action, with the first chunk of its input.
//
// A word that looks like an option is never an argument. Behind an option with
// a value, any word is the value.
//
// Immutable, so usable by any number of threads. The pointers that it returns
// are valid as long as the grammar.
class Grammar {
 public:
  // Throws Error, which names the fault, when an option has no form or one
  // without its dashes, when two have the same form, or two arguments the same
  // placeholder, when an argument does not exist, and when a required argument
  // follows an optional one.
  Grammar(std::vector<Option> options, std::vector<Parameter> arguments);
  Grammar(Grammar const&) = delete;
  Grammar& operator=(Grammar const&) = delete;

  std::vector<Parameter> const& arguments() const { return arguments_; }
  OptionForms const& forms() const { return forms_; }

  // Whether the keyword alone is a complete line.
  bool allowsNoWord() const;

  // The form that `word` is, in any letter case, and its option; null for any
  // other word.
  OptionForm const* formNamed(std::string const& word) const;
  Option const* optionNamed(std::string const& word) const;

  // The roles of the words behind tokens[0], the keyword, in order.
  std::vector<WordRole> roles(std::vector<std::string> const& tokens) const;

  // The first argument that has none of `roles`, or null.
  Parameter const* argumentBehind(std::vector<WordRole> const& roles) const;

  // Whether each of the first `count` words behind tokens[0] is valid in its
  // role.
  bool accepts(std::vector<WordRole> const& roles,
               std::vector<std::string> const& tokens, std::size_t count) const;

  // Reads the words behind tokens[0] into `arguments`. Returns no problem, or
  // the first one; `arguments` then holds what stands before it.
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
