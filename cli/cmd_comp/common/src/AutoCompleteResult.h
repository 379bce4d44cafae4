#ifndef QOR_CLI_AUTO_COMPLETE_RESULT_H
#define QOR_CLI_AUTO_COMPLETE_RESULT_H

#include <cstdint>
#include <string>

#include "QorTypes.h"

namespace QorCliUtilities {

// One candidate of a completion or help request.
//
// A plain value, which owns its texts: a copy shares nothing with the original.
// Different objects may be used by different threads.
struct AutoCompleteResult {
  // Where a candidate stands among others: by rank, then by key. The tree only
  // carries it; whoever shows the candidates sorts them.
  struct SortIndex {
    std::uint32_t rank;
    std::string key;
  };

  QorCliCompletionToken_1T token;  // what kind of text it is
  std::string completion;          // the text offered for the last word
  std::string help;                // the text shown beside it, may be empty
  SortIndex sortIndex;
};

}  // namespace QorCliUtilities

#endif
