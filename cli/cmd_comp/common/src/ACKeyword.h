#ifndef QOR_CLI_AC_KEYWORD_H
#define QOR_CLI_AC_KEYWORD_H

#include <set>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"

namespace QorCliUtilities {

// The settings of a keyword. Unless told otherwise, it is visible and valid in
// every mode, with and without a cursor, and no line may end with it.
//
//   KeywordSettings ignore{"-i|--ignore", "Ignore the case of letters"};
//   ignore.splitAlternatives = true;
//   ignore.completionToken = QOR_CLI_TOKEN_OPTION;
//
// Each means what the parameter of that name means in the constructors of
// ACKeyword and AutoCompleteNode.
struct KeywordSettings {
  std::string keyword;
  std::string help;
  std::set<unsigned> modes = {QOR_CLI_MODE_ANY};
  bool potentialTerminalNode = false;
  bool hidden = false;
  QorCliCompletionToken_1T completionToken = QOR_CLI_TOKEN_WORD;
  bool splitAlternatives = false;
  bool offerWhenEmpty = true;
  bool variantCompletion = false;
  bool requiresCursor = false;
  bool forbidsCursor = false;
};

// A node for a fixed word of a command.
//
// Matches the whole word in any letter case; abbreviations count only in
// completion. The word may be a list of spellings. Created with
// VALIDATION_KEYWORD. Ownership and threads are as for every node.
class ACKeyword : public AutoCompleteNode {
 public:
  // `keyword` is kept in lower case. `help` is the text shown beside it.
  // `completionToken`: QOR_CLI_TOKEN_OPTION is passed on to the candidates of
  // alternatives and of variant completion; with any other value, candidates
  // say whether they complete a begun word or follow the line.
  // `splitAlternatives`: `keyword` is a list of spellings separated by "|", of
  // which those that begin with "-" are offered as completions.
  // `offerWhenEmpty`: offered even before its first letter is typed as the
  // first word of a line (outside QOR_CLI_MODE_EXEC; there it always is).
  // `variantCompletion`: offered as an option is, in the first sort group.
  // `requiresCursor`, `forbidsCursor`: the keyword is there only while the
  // session has a cursor, or has none; with both, it never is.
  // The other arguments are those of AutoCompleteNode. All are copied.
  ACKeyword(std::string const& keyword, std::string const& help,
            std::set<unsigned> modes, bool potentialTerminalNode, bool hidden,
            QorCliCompletionToken_1T completionToken, bool splitAlternatives,
            bool offerWhenEmpty, bool variantCompletion, bool requiresCursor,
            bool forbidsCursor);

  // The same, with named settings, which are copied.
  explicit ACKeyword(KeywordSettings const& settings);

  // The word as it is kept: in lower case, a list of spellings as a whole.
  std::string keyword() const override;

  // Offers the keyword when it begins with the word at `position`, and moves
  // `position` on by one; does nothing when the keyword is hidden or not there
  // for the session's cursor. `lastToken`, `endsWithSpace` and `output` make no
  // difference. Throws Error "Autocomplete keyword past end of token list",
  // "Autocomplete keyword called on intermediate node" when `position` is
  // neither that of the last token nor the number of tokens, or "Autocomplete
  // keyword not valid for mode". Returns 0.
  int autoComplete(CliApiContext& ctx, std::vector<std::string> const& tokens,
                   std::string const& lastToken, unsigned& position,
                   bool endsWithSpace, bool helpRequest,
                   std::vector<AutoCompleteResult>& results,
                   IOutput& output) override;

  // Whether the token at `position` is the keyword; moves `position` on by one,
  // also when it is not. Leaves `position` alone when the keyword is not there
  // for the session's cursor, which is no match, and when, `executing`, the
  // node has VALIDATION_NONE, which is one. Throws Error "isMatch keyword past
  // end of token list" or "isMatch keyword not valid for mode".
  bool isMatch(CliApiContext& ctx, std::vector<std::string> const& tokens,
               unsigned& position, IOutput& output, bool executing) override;

  bool ignoreCase() const override;            // true
  std::string toString() const override;       // as keyword()
  std::string toShortString() const override;  // likewise

  // The help text in a mode: the same in all of them, in this class.
  virtual std::string helpText(QorCliModeEnum_1T mode) const;

  // Whether a cursor stands for no cursor: null or "".
  static bool isGhost(char const* cursor);

 private:
  struct Request;

  bool existsForCursor(char const* cursor) const;
  void offerAlternatives(Request const& request,
                         std::vector<AutoCompleteResult>& results) const;
  void offerKeyword(Request const& request,
                    std::vector<AutoCompleteResult>& results) const;
  void offerAsOption(std::string const& text, Request const& request,
                     std::vector<AutoCompleteResult>& results) const;

  std::string keyword_;
  std::vector<std::string> alternatives_;
  std::string help_;
  bool splitAlternatives_;
  bool offerWhenEmpty_;
  bool requiresCursor_;
  bool forbidsCursor_;
  bool variantCompletion_;
  QorCliCompletionToken_1T completionToken_;
};

}  // namespace QorCliUtilities

#endif
