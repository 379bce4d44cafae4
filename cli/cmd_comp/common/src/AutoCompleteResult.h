#ifndef QOR_CLI_AUTO_COMPLETE_RESULT_H
#define QOR_CLI_AUTO_COMPLETE_RESULT_H

#include <cstdint>
#include <string>

#include "QorTypes.h"

namespace QorCliUtilities {

// One candidate of a completion or help request.
//
// A plain value that owns its texts. Different objects may be used by different
// threads.
struct AutoCompleteResult {
  // The sort order of a candidate: by rank, then by key. The tree does not
  // sort; whoever displays the candidates does.
  struct SortIndex {
    std::uint32_t rank;
    std::string key;
  };

  QorCliCompletionToken_1T token;  // the kind of candidate
  std::string completion;          // the text offered for the last word
  std::string help;                // the text shown beside it, may be empty
  SortIndex sortIndex;
};

}  // namespace QorCliUtilities

#endif
