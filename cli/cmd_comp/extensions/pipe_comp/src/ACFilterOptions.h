#ifndef QOR_CLI_AC_FILTER_OPTIONS_H
#define QOR_CLI_AC_FILTER_OPTIONS_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "ACOptions.h"

namespace QorCliPipe {

// The node for everything after the keyword "filter": the options in any order
// and the pattern (filterGrammar()).
//
// Candidates depend only on the last two words: a pattern may be offered twice,
// and after a pattern only the end of the line is offered.
class ACFilterOptions : public QorCliUtilities::ACOptions {
 public:
  // A form of an option: a row of the option table.
  using ACFilterOption = QorCliUtilities::OptionForm;

  // A visible node; the arguments are those of AutoCompleteNode.
  ACFilterOptions(std::set<unsigned> modes,
                  QorCliUtilities::Validation_Type validation,
                  bool potentialTerminalNode);

  // False: after several words, the tree offers the end of the line.
  bool isLastMultiTokenElement(
      QorCliUtilities::CliApiContext& context) const override;

  // Whether every character of `text` is a decimal digit; true if it is empty.
  static bool isNumber(std::string const& text);

 protected:
  Reading read(std::vector<std::string> const& tokens, bool endsWithSpace,
               bool helpRequest) const override;

 private:
  // The option table, by lower-case form.
  std::map<std::string, ACFilterOption> const options_;
};

}  // namespace QorCliPipe

#endif
