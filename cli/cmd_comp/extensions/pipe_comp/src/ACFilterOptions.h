#ifndef QOR_CLI_AC_FILTER_OPTIONS_H
#define QOR_CLI_AC_FILTER_OPTIONS_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"

namespace QorCliPipe {

// The node for everything behind the keyword "filter": the options in any order
// and the pattern.
//
// One node takes any number of words and looks at none of them: completion
// offers only what may come next, and the command reads the words when it runs.
// It keeps nothing of a line. Ownership and threads are as for every node.
class ACFilterOptions : public QorCliUtilities::AutoCompleteNode {
 public:
  // One written form of an option.
  struct ACFilterOption {
    std::string helpText;
    std::string otherForm;  // key of the same option's other written form
    std::string name;       // as offered: "-A", although its key is "-a"
    bool takesValue;        // a number must follow
    bool isLongForm;        // "--after", not "-A"
  };

  // A visible node; the arguments are those of AutoCompleteNode.
  ACFilterOptions(std::set<unsigned> modes,
                  QorCliUtilities::Validation_Type validation,
                  bool potentialTerminalNode);

  // Offers what the last word, `tokens.back()`, may become or what may follow
  // it. Each option is offered until one of its forms has been typed. Returns 0
  // and moves `pos` on by one; returns -1, offering nothing, when the word
  // begins with "-" and is the beginning of no option that is left. Throws
  // Error "Autocomplete action Past end of token list" or "Autocomplete action
  // not valid for mode". `lastToken` and `output` make no difference.
  int autoComplete(QorCliUtilities::CliApiContext& context,
                   std::vector<std::string> const& tokens,
                   std::string const& lastToken, unsigned& pos,
                   bool endsWithSpace, bool helpRequest,
                   std::vector<QorCliUtilities::AutoCompleteResult>& results,
                   QorCliUtilities::IOutput& output) override;

  // Matches any token and moves `pos` on by one. Throws Error "isMatch action
  // past end of token list" or "isMatch action Not valid for mode" and leaves
  // `pos` alone.
  bool isMatch(QorCliUtilities::CliApiContext& context,
               std::vector<std::string> const& tokens, unsigned& pos,
               QorCliUtilities::IOutput& output, bool executing) override;

  bool isMultiTokenNode() const override;      // true
  std::string toShortString() const override;  // "MultiParms"

  // Whether every character of `text` is a decimal digit; true for no text.
  static bool isNumber(std::string const& text);

 private:
  std::map<std::string, ACFilterOption> options_;  // by lower-case written form
};

}  // namespace QorCliPipe

#endif
