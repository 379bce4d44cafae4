#ifndef QOR_CLI_AC_KEYWORD_H
#define QOR_CLI_AC_KEYWORD_H

#include <set>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"

namespace QorCliUtilities {

// The settings of a keyword. By default, it is visible and valid in every mode,
// with and without a cursor, and no line may end with it.
//
//   KeywordSettings ignore{"-i|--ignore", "Ignore the case of letters"};
//   ignore.splitAlternatives = true;
//   ignore.completionToken = QOR_CLI_TOKEN_OPTION;
//
// Each corresponds to the parameter of that name in the constructors of
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
// Matches the whole word in any letter case; completion also accepts
// abbreviations. The word may be a list of spellings. Created with
// VALIDATION_KEYWORD. Ownership and threads are as for every node.
class ACKeyword : public AutoCompleteNode {
 public:
  // `keyword` is kept in lower case. `help` is the text shown beside it.
  // `completionToken`: QOR_CLI_TOKEN_OPTION is the kind of candidates for
  // alternatives and variant completion; with any other value, the kind says
  // whether a candidate completes the last word or follows the line.
  // `splitAlternatives`: `keyword` is a list of spellings separated by "|";
  // completion offers those that begin with "-".
  // `offerWhenEmpty`: as the first word of a line, offered even before its
  // first letter is typed (always the case in QOR_CLI_MODE_EXEC).
  // `variantCompletion`: offered like an option, in the first sort group.
  // `requiresCursor`, `forbidsCursor`: the keyword exists only while the
  // session has a cursor, or has none; with both, never.
  // The other arguments are those of AutoCompleteNode. All are copied.
  ACKeyword(std::string const& keyword, std::string const& help,
            std::set<unsigned> modes, bool potentialTerminalNode, bool hidden,
            QorCliCompletionToken_1T completionToken, bool splitAlternatives,
            bool offerWhenEmpty, bool variantCompletion, bool requiresCursor,
            bool forbidsCursor);

  // The same with named settings, which are copied.
  explicit ACKeyword(KeywordSettings const& settings);

  // The word in lower case, or the whole list of spellings.
  std::string keyword() const override;

  // Offers the keyword when it begins with the word at `position`, and
  // increments `position`; does nothing when the keyword is hidden or excluded
  // by the session's cursor. Ignores `lastToken`, `endsWithSpace` and `output`.
  // Throws Error "Autocomplete keyword past end of token list",
  // "Autocomplete keyword called on intermediate node" when `position` is
  // neither that of the last token nor the number of tokens, or "Autocomplete
  // keyword not valid for mode". Returns 0.
  int autoComplete(CliApiContext& ctx, std::vector<std::string> const& tokens,
                   std::string const& lastToken, unsigned& position,
                   bool endsWithSpace, bool helpRequest,
                   std::vector<AutoCompleteResult>& results,
                   IOutput& output) override;

  // Whether the token at `position` is the keyword; increments `position` in
  // either case. Leaves `position` alone and returns false when the session's
  // cursor excludes the keyword; leaves it alone and returns true when
  // `executing` and the node has VALIDATION_NONE. Throws Error "isMatch keyword
  // past end of token list" or "isMatch keyword not valid for mode".
  bool isMatch(CliApiContext& ctx, std::vector<std::string> const& tokens,
               unsigned& position, IOutput& output, bool executing) override;

  bool ignoreCase() const override;            // true
  std::string toString() const override;       // as keyword()
  std::string toShortString() const override;  // as keyword()

  // The help text in `mode`; in this class, the same in every mode.
  virtual std::string helpText(QorCliModeEnum_1T mode) const;

  // Whether `cursor` means no cursor: null or "".
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
