#ifndef QOR_CLI_AC_OPTIONS_H
#define QOR_CLI_AC_OPTIONS_H

#include <set>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"
#include "Grammar.h"

namespace QorCliUtilities {

// The node for everything after a command's keyword, the first word of the
// line: the options and arguments of a grammar.
//
// One node matches any number of words without checking them: completion offers
// only what may come next, and the command parses the words with Grammar::parse
// when it runs. Ownership and threads are as for every node.
class ACOptions : public AutoCompleteNode {
 public:
  // A visible node. `grammar` is not owned and must outlive the node; the other
  // arguments are those of AutoCompleteNode.
  ACOptions(Grammar const& grammar, std::set<unsigned> modes,
            Validation_Type validation, bool potentialTerminalNode);

  // Offers completions of the last word, `tokens.back()`, or what may follow
  // it, and "<cr>" if the line may end there; after the keyword alone, "<cr>"
  // for help only, since the tree itself offers it for completion. An option is
  // offered until one of its forms has been typed. Returns 0 and increments
  // `pos`, even if none of a parameter's choices begins with the last word;
  // returns -1 and offers nothing if an earlier word is invalid, or the last
  // one is and cannot become an option or a parameter. Throws Error
  // "Autocomplete action Past end of token list" or "Autocomplete action not
  // valid for mode". Ignores `lastToken` and `output`.
  int autoComplete(CliApiContext& context,
                   std::vector<std::string> const& tokens,
                   std::string const& lastToken, unsigned& pos,
                   bool endsWithSpace, bool helpRequest,
                   std::vector<AutoCompleteResult>& results,
                   IOutput& output) override;

  // Matches any token and increments `pos`. Throws Error "isMatch action past
  // end of token list" or "isMatch action Not valid for mode", leaving `pos`
  // alone.
  bool isMatch(CliApiContext& context, std::vector<std::string> const& tokens,
               unsigned& pos, IOutput& output, bool executing) override;

  bool isMultiTokenNode() const override;  // true
  // True once completion has matched the last word of a line with at least two
  // words after the keyword: the tree then asks this node what follows.
  bool isLastMultiTokenElement(CliApiContext& context) const override;
  std::string toShortString() const override;  // "MultiParms"

 protected:
  // The state of a line, which decides what is offered.
  struct Reading {
    enum class Place {
      kKeyword,       // the line is the keyword alone
      kOption,        // `word` is the option `form`
      kValue,         // `word` is a valid value of `form`
      kMissingValue,  // `word` is no valid value of `form`
      kBegunOption,   // `word` may become an option
      kArgument,      // `word` is a value of `argument`
      kInvalid,       // nothing to offer
    };
    Place place = Place::kKeyword;
    std::string word = {};  // the last word of the line
    Option const* option = nullptr;
    OptionForm const* form = nullptr;  // of `option`, as typed
    Parameter const* argument = nullptr;
    OptionForms remaining = {};       // options that may follow
    Parameter const* next = nullptr;  // argument that may follow, or null
    bool mayEnd = false;              // the line may end here
  };

  // Analyses a line for completion or help.
  virtual Reading read(std::vector<std::string> const& tokens,
                       bool endsWithSpace, bool helpRequest) const;

  // Removes both forms of the option `word` from `forms`, if it is one.
  static void removeOption(OptionForms& forms, std::string const& word);

  // The forms that `word` is a prefix of, in any letter case.
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
