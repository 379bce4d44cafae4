#ifndef QOR_CLI_ENGINE_CANDIDATES_H
#define QOR_CLI_ENGINE_CANDIDATES_H

#include <cstddef>
#include <string>
#include <vector>

#include "AutoCompleteResult.h"

namespace QorCliEngine {

using Candidate = QorCliUtilities::AutoCompleteResult;

// What the engine makes of the candidates that it is offered.
//
// A candidate in angle brackets is a placeholder: it is shown and never typed.
// "<cr>" is the one that says that the line may be run.
namespace Candidates {

// Sorted by rank, then key, "<cr>" last; candidates that are offered several
// times with the same help, or once with and once without, are merged. Those
// without a text are left out.
std::vector<Candidate> merged(std::vector<Candidate> candidates);

bool isPlaceholder(std::string const& text);

bool isReturn(Candidate const& candidate);

// Whether a candidate that does not begin as the word that is being typed
// stands after it, and not in its place.
bool follows(Candidate const& candidate);

// Whether "<cr>" is among them.
bool offerReturn(std::vector<Candidate> const& candidates);

void removeReturn(std::vector<Candidate>& candidates);

struct Completion {
  std::string word;  // what takes the place of the word that is being typed
  bool show;         // there is more to choose from: show the candidates
};

// Completes `word`, which is the empty text where a word may begin.
// `candidates` have been merged, and there is at least one.
//
// A single candidate gets a blank after it when it is a finished word. Several
// are typed as far as they agree, unless the word has not been begun and could
// be something else than these. Candidates that follow the word say that it is
// finished.
Completion complete(std::string const& word,
                    std::vector<Candidate> const& candidates);

// The candidates as Tab shows them: in columns, then placeholders and their
// help. `shown` is what is shown of a candidate's text. `width` as in Layout.
using Shown = std::string (*)(std::string const& text);
std::string list(std::vector<Candidate> const& candidates, Shown shown,
                 std::size_t width);

// The candidates with their help texts.
std::string helpList(std::vector<Candidate> const& candidates,
                     std::size_t width);

// One row for each candidate, in the order given: kind, text, help, rank and
// key, separated by tabs. Line feeds, tabs and backslashes inside a text are
// written as \n, \t and \\.
std::string rows(std::vector<Candidate> const& candidates);

}  // namespace Candidates
}  // namespace QorCliEngine

#endif
