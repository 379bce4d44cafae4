#include "Candidates.h"

namespace QorUnit {
namespace {

void appendWord(std::string& list, std::string const& word) {
  if (!list.empty()) list += ' ';
  list += word;
}

}  // namespace

using QorCliUtilities::AutoCompleteResult;

std::string describe(AutoCompleteResult const& candidate) {
  return std::to_string(candidate.token) + ' ' + candidate.completion + " [" +
         std::to_string(candidate.sortIndex.rank) + ' ' +
         candidate.sortIndex.key + "] " + candidate.help;
}

std::vector<std::string> describe(
    std::vector<AutoCompleteResult> const& candidates) {
  std::vector<std::string> list;
  for (auto const& candidate : candidates) list.push_back(describe(candidate));
  return list;
}

std::string texts(std::vector<AutoCompleteResult> const& candidates) {
  std::string list;
  for (auto const& candidate : candidates) {
    appendWord(list, candidate.completion);
  }
  return list;
}

std::string textsAndTokens(std::vector<AutoCompleteResult> const& candidates) {
  std::string list;
  for (auto const& candidate : candidates) {
    appendWord(list,
               candidate.completion + ':' + std::to_string(candidate.token));
  }
  return list;
}

}  // namespace QorUnit
