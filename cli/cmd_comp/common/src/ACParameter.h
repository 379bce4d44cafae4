#ifndef QOR_CLI_AC_PARAMETER_H
#define QOR_CLI_AC_PARAMETER_H

#include <set>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"
#include "Parameter.h"

namespace QorCliUtilities {

// A node for a word that the operator chooses: any word, a number in a range,
// or one of a list of words.
//
//   ACParameter(Parameter::number("<id>", "The number of the port", 1, 48),
//               true)
//
// Its keyword() is the placeholder. Ownership and threads are as for every
// node.
class ACParameter : public AutoCompleteNode {
 public:
  // A visible node. `potentialTerminalNode`: a command line may end here.
  // `modes`: the modes in which the node is valid.
  ACParameter(Parameter parameter, bool potentialTerminalNode,
              std::set<unsigned> modes = {QOR_CLI_MODE_ANY});

  // Whether the parameter accepts the token at `position`, which is
  // incremented. Of tokens that begin with a dash, only a single dash is
  // accepted. Throws Error "isMatch parameter past end of token list" or
  // "isMatch parameter not valid for mode". Ignores `output` and `executing`.
  bool isMatch(CliApiContext& context, std::vector<std::string> const& tokens,
               unsigned& position, IOutput& output, bool executing) override;

  // Offers completions of the token at `position`, or what may follow the line
  // if there is none; increments `position` and returns 0. Throws Error
  // "Autocomplete parameter not valid for mode".
  int autoComplete(CliApiContext& context,
                   std::vector<std::string> const& tokens,
                   std::string const& lastToken, unsigned& position,
                   bool endsWithSpace, bool helpRequest,
                   std::vector<AutoCompleteResult>& results,
                   IOutput& output) override;

  bool ignoreCase() const override;            // true
  std::string toShortString() const override;  // the placeholder

 private:
  Parameter parameter_;
};

}  // namespace QorCliUtilities

#endif
