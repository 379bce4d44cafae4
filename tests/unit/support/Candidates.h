#ifndef QOR_UNIT_CANDIDATES_H
#define QOR_UNIT_CANDIDATES_H

#include <string>
#include <vector>

#include "AutoCompleteResult.h"

namespace QorUnit {

// All of a candidate: "<token> <completion> [<rank> <key>] <help>".
std::string describe(QorCliUtilities::AutoCompleteResult const& candidate);

std::vector<std::string> describe(
    std::vector<QorCliUtilities::AutoCompleteResult> const& candidates);

// The texts alone, separated by blanks.
std::string texts(
    std::vector<QorCliUtilities::AutoCompleteResult> const& candidates);

// The texts, each with its token: "--after:1 <pattern>:1".
std::string textsAndTokens(
    std::vector<QorCliUtilities::AutoCompleteResult> const& candidates);

}  // namespace QorUnit

#endif
