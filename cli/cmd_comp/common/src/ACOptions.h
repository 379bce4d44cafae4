#ifndef QOR_CLI_AC_OPTIONS_H
#define QOR_CLI_AC_OPTIONS_H

#include <set>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"
#include "Grammar.h"

namespace QorCliUtilities {

// The node for everything behind the keyword of a command, which is the first
// word of the line: the options and the arguments of a grammar.
//
// One node takes any number of words and looks at none of them: completion
// offers only what may come next, and the command reads the words with
// Grammar::parse when it runs. Ownership and threads are as for every node.
class ACOptions : public AutoCompleteNode {
 public:
  // A visible node. `grammar` is not owned and must outlive the node; the other
  // arguments are those of AutoCompleteNode.
  ACOptions(Grammar const& grammar, std::set<unsigned> modes,
            Validation_Type validation, bool potentialTerminalNode);

  // Offers what the last word, `tokens.back()`, may become or what may follow
  // it, and "<cr>" where the line may end; behind the keyword alone for help
  // only, since the tree itself offers it for completion. Each option is
  // offered until one of its forms has been typed. Returns 0 and moves `pos` on
  // by one, also when none of a parameter's choices begins with the last word;
  // returns -1, offering nothing, when a word before it is invalid, or when it
  // is itself and no option or parameter can come of it. Throws Error
  // "Autocomplete action Past end of token list" or "Autocomplete action not
  // valid for mode". `lastToken` and `output` make no difference.
  int autoComplete(CliApiContext& context,
                   std::vector<std::string> const& tokens,
                   std::string const& lastToken, unsigned& pos,
                   bool endsWithSpace, bool helpRequest,
                   std::vector<AutoCompleteResult>& results,
                   IOutput& output) override;

  // Matches any token and moves `pos` on by one. Throws Error "isMatch action
  // past end of token list" or "isMatch action Not valid for mode" and leaves
  // `pos` alone.
  bool isMatch(CliApiContext& context, std::vector<std::string> const& tokens,
               unsigned& pos, IOutput& output, bool executing) override;

  bool isMultiTokenNode() const override;  // true
  // True once completion has matched the last word of a line that has two words
  // or more behind the keyword: the tree then asks this node what follows.
  bool isLastMultiTokenElement(CliApiContext& context) const override;
  std::string toShortString() const override;  // "MultiParms"

 protected:
  // Where a line stands, and what may therefore be offered.
  struct Reading {
    enum class Place {
      kKeyword,       // there is the keyword alone
      kOption,        // `word` is `form`
      kValue,         // it is a value of `form`
      kMissingValue,  // it stands where the value of `form` should
      kBegunOption,   // it may become an option
      kArgument,      // it is `argument`
      kInvalid,       // nothing can be offered
    };
    Place place = Place::kKeyword;
    std::string word = {};  // the one to complete or go on from
    Option const* option = nullptr;
    OptionForm const* form = nullptr;  // the option, as it was typed
    Parameter const* argument = nullptr;
    OptionForms remaining = {};       // options that may follow
    Parameter const* next = nullptr;  // the argument that may follow, if any
    bool mayEnd = false;              // the line may end here
  };

  // Reads a line for completion and help.
  virtual Reading read(std::vector<std::string> const& tokens,
                       bool endsWithSpace, bool helpRequest) const;

  // Removes the option of which `word` is a form, if it is one, from `forms`.
  static void removeOption(OptionForms& forms, std::string const& word);

  static OptionForms formsBeginningWith(OptionForms const& forms,
                                        std::string const& word);

  Grammar const& grammar() const { return grammar_; }

 private:
  class Offer;

  OptionForms unusedForms(std::vector<WordRole> const& roles,
                          std::vector<std::string> const& tokens) const;
  static Reading::Place placeOf(WordRole const& role, std::string const& word,
                                bool endsWithSpace);

  Grammar const& grammar_;
  bool atLastOfSeveral_ = false;
};

}  // namespace QorCliUtilities

#endif
