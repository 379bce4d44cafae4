#include "Grammar.h"

#include <Poco/String.h>

#include <algorithm>
#include <utility>

#include "Error.h"
#include "Tokenizer.h"

namespace QorCliUtilities {
namespace {

Problem problemWith(WordRole const& role, std::string const& word) {
  using Kind = Problem::Kind;
  if (role.parameter != nullptr && !role.parameter->accepts(word)) {
    return {Kind::kInvalidValue, role.parameter->refusal(word, role.name)};
  }
  if (role.parameter != nullptr || role.option != nullptr) return {};
  if (looksLikeOption(word)) {
    return {Kind::kUnknownOption, "Unknown option '" + word + "'"};
  }
  return {Kind::kUnexpectedWord, "Unexpected word '" + word + "'"};
}

void checkForms(Option const& option) {
  std::string const& shortForm = option.shortForm;
  std::string const& longForm = option.longForm;
  if (shortForm.empty() && longForm.empty()) {
    throw Error("An option has no form", 0);
  }
  bool const isShort =
      shortForm.size() > 1 && shortForm[0] == '-' && shortForm[1] != '-';
  if (!shortForm.empty() && !isShort) {
    throw Error("Not a short form of an option: " + shortForm, 0);
  }
  bool const isLong = longForm.size() > 2 && longForm.rfind("--", 0) == 0;
  if (!longForm.empty() && !isLong) {
    throw Error("Not a long form of an option: " + longForm, 0);
  }
}

}  // namespace

bool looksLikeOption(std::string word) {
  return word.size() > 1 && trimQuotes(word).rfind('-', 0) == 0;
}

bool Arguments::has(std::string const& name) const {
  return find(name) != nullptr;
}

std::string Arguments::text(std::string const& name,
                            std::string otherwise) const {
  std::string const* const value = find(name);
  if (value != nullptr) return *value;
  return otherwise;
}

unsigned Arguments::number(std::string const& name, unsigned otherwise) const {
  std::string const* const digits = find(name);
  if (digits == nullptr) return otherwise;
  if (!isDecimalNumber(*digits)) throw Error("Not a number: " + *digits, 0);
  return decimalNumber(*digits);
}

// The last value typed, or null.
std::string const* Arguments::find(std::string const& name) const {
  void const* const what =
      grammar_ != nullptr ? grammar_->named(name) : nullptr;
  if (what == nullptr) throw Error("No such parameter: " + name, 0);
  auto const last =
      std::find_if(typed_.rbegin(), typed_.rend(),
                   [what](Typed const& typed) { return typed.what == what; });
  return last == typed_.rend() ? nullptr : &last->value;
}

Grammar::Grammar(std::vector<Option> options, std::vector<Parameter> arguments)
    : options_(std::move(options)), arguments_(std::move(arguments)) {
  for (Option const& option : options_) {
    checkForms(option);
    addForm(option, option.shortForm, option.longForm);
    addForm(option, option.longForm, option.shortForm);
  }
  checkArguments();
}

void Grammar::checkArguments() const {
  for (auto argument = arguments_.begin(); argument != arguments_.end();
       ++argument) {
    std::string const& name = argument->placeholder();
    if (!argument->exists())
      throw Error("An argument is an empty parameter", 0);
    for (auto earlier = arguments_.begin(); earlier != argument; ++earlier) {
      if (Poco::icompare(earlier->placeholder(), name) == 0) {
        throw Error("Two arguments are named " + name, 0);
      }
      if (argument->isRequired() && !earlier->isRequired()) {
        throw Error(
            "The required argument " + name + " follows an optional one", 0);
      }
    }
  }
}

void Grammar::addForm(Option const& option, std::string const& name,
                      std::string const& otherForm) {
  if (name.empty()) return;
  OptionForm form{option.help, Poco::toLower(otherForm), name,
                  option.value.exists(), name.rfind("--", 0) == 0};
  if (!forms_.emplace(Poco::toLower(name), std::move(form)).second) {
    throw Error("Two options have the form " + name, 0);
  }
}

bool Grammar::allowsNoWord() const {
  return arguments_.empty() || !arguments_.front().isRequired();
}

OptionForm const* Grammar::formNamed(std::string const& word) const {
  auto const found = forms_.find(Poco::toLower(word));
  return found == forms_.end() ? nullptr : &found->second;
}

Option const* Grammar::optionNamed(std::string const& word) const {
  if (word.empty()) return nullptr;
  for (Option const& option : options_) {
    if (Poco::icompare(option.shortForm, word) == 0 ||
        Poco::icompare(option.longForm, word) == 0) {
      return &option;
    }
  }
  return nullptr;
}

std::vector<WordRole> Grammar::roles(
    std::vector<std::string> const& tokens) const {
  std::vector<WordRole> roles;
  Option const* awaiting = nullptr;  // the option whose value comes next
  roles.reserve(tokens.size());
  auto argument = arguments_.begin();
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    Option const* const option = optionNamed(tokens[i]);
    if (awaiting != nullptr) {
      roles.push_back({awaiting, &awaiting->value, tokens[i - 1]});
      awaiting = nullptr;
    } else if (option != nullptr) {
      roles.push_back({option});
      if (option->value.exists()) awaiting = option;
    } else if (looksLikeOption(tokens[i]) || argument == arguments_.end()) {
      roles.push_back({});
    } else {
      roles.push_back({nullptr, &*argument, argument->placeholder()});
      ++argument;
    }
  }
  return roles;
}

Parameter const* Grammar::argumentBehind(
    std::vector<WordRole> const& roles) const {
  auto next = arguments_.begin();
  for (WordRole const& role : roles) {
    if (role.isArgument()) ++next;
  }
  return next == arguments_.end() ? nullptr : &*next;
}

bool Grammar::accepts(std::vector<WordRole> const& roles,
                      std::vector<std::string> const& tokens,
                      std::size_t count) const {
  for (std::size_t i = 0; i < count; ++i) {
    if (problemWith(roles[i], tokens[i + 1])) return false;
  }
  return true;
}

Problem Grammar::parse(std::vector<std::string> const& tokens,
                       Arguments& arguments) const {
  arguments = {};
  arguments.grammar_ = this;
  std::vector<WordRole> const roles = this->roles(tokens);
  for (std::size_t i = 0; i < roles.size(); ++i) {
    std::string const& word = tokens[i + 1];
    WordRole const& role = roles[i];
    if (Problem problem = problemWith(role, word)) return problem;
    void const* const what = role.option;
    arguments.typed_.push_back(
        {what != nullptr ? what : role.parameter,
         role.parameter != nullptr ? role.parameter->value(word) : ""});
  }
  if (!roles.empty() && roles.back().awaitsValue()) {
    return {Problem::Kind::kMissingValue,
            "Missing value after '" + tokens.back() + "'"};
  }
  Parameter const* const missing = argumentBehind(roles);
  if (missing == nullptr || !missing->isRequired()) return {};
  return {Problem::Kind::kMissingArgument, "Missing " + missing->placeholder()};
}

// The option or the argument with that name, or null.
void const* Grammar::named(std::string const& name) const {
  if (Option const* const option = optionNamed(name)) return option;
  for (Parameter const& argument : arguments_) {
    if (Poco::icompare(argument.placeholder(), name) == 0) return &argument;
  }
  return nullptr;
}

}  // namespace QorCliUtilities
