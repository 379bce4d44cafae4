#ifndef QOR_CLI_AC_PIPE_KEYWORD_H
#define QOR_CLI_AC_PIPE_KEYWORD_H

#include <set>
#include <string>

#include "ACKeyword.h"

namespace QorCliUtilities {

// The keyword of a pipe command: an ACKeyword that is always offered as the
// first word, as a candidate of the kind QOR_CLI_TOKEN_PIPE_COMMAND. The
// constructors ignore `completionToken` and `offerWhenEmpty`.
class ACPipeKeyword : public ACKeyword {
 public:
  // A visible keyword with a help text, valid in `modes`.
  // `potentialTerminalNode`: the command needs no further word.
  ACPipeKeyword(std::string const& keyword, std::string const& help,
                std::set<unsigned> modes, bool potentialTerminalNode);

  // The arguments are those of ACKeyword.
  ACPipeKeyword(std::string const& keyword, std::string const& help,
                std::set<unsigned> modes, bool potentialTerminalNode,
                bool hidden, QorCliCompletionToken_1T completionToken,
                bool splitAlternatives, bool offerWhenEmpty,
                bool variantCompletion, bool requiresCursor,
                bool forbidsCursor);
  explicit ACPipeKeyword(KeywordSettings const& settings);
  ~ACPipeKeyword() override;
};

}  // namespace QorCliUtilities

#endif
