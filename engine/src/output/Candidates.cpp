#include "output/Candidates.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

#include "AutoCompleteNode.h"
#include "output/Layout.h"

namespace QorCliEngine {
namespace Candidates {
namespace {

using QorCliUtilities::AutoCompleteNode;

constexpr char kReturn[] = "<cr>";
constexpr char kReturnHelp[] = "Run the line as it stands";

bool standsBefore(Candidate const& a, Candidate const& b) {
  auto const place = [](Candidate const& c) {
    return std::tie(c.sortIndex.rank, c.sortIndex.key);
  };
  if (isReturn(a) != isReturn(b)) return isReturn(b);
  return place(a) < place(b);
}

// Takes `candidate`, which has the same text, into `same` if the two can be
// shown as one.
bool mergeInto(Candidate& same, Candidate const& candidate) {
  if (same.help.empty()) same.help = candidate.help;
  return candidate.help.empty() || same.help == candidate.help;
}

bool isOtherWord(Candidate const& candidate) {
  return isPlaceholder(candidate.completion) && !isReturn(candidate);
}

// A text that begins with a quote may stand for a word that does not.
bool beginsWith(std::string const& text, std::string const& word) {
  return AutoCompleteNode::match(text, word) ||
         (text.front() == '"' && AutoCompleteNode::match(text.substr(1), word));
}

// Each of them once.
std::vector<std::string> textsBeginningWith(
    std::string const& word, std::vector<Candidate> const& candidates) {
  std::vector<std::string> texts;
  std::unordered_set<std::string> known;
  for (Candidate const& candidate : candidates) {
    std::string const& text = candidate.completion;
    if (isPlaceholder(text) || !beginsWith(text, word)) continue;
    if (known.insert(text).second) texts.push_back(text);
  }
  return texts;
}

// How far the texts agree, ignoring case, as the first of them is written.
std::string commonBeginning(std::vector<std::string> const& texts) {
  std::string common = texts.front();
  for (std::string const& text : texts) {
    while (!AutoCompleteNode::match(text, common)) common.pop_back();
  }
  // Not in the middle of a character.
  while (!common.empty() && common.size() < texts.front().size() &&
         (texts.front()[common.size()] & 0xC0) == 0x80) {
    common.pop_back();
  }
  return common;
}

// Whether nothing more can be typed in the word: it is not a folder, and a
// quote that it opens is closed.
bool isFinished(std::string const& text) {
  bool const open =
      text.front() == '"' && (text.size() == 1 || text.back() != '"');
  return !open && text.back() != '/';
}

Completion completeFrom(std::vector<std::string> const& texts,
                        std::string const& word, bool otherWords) {
  if (texts.empty() || (word.empty() && otherWords)) return {word, true};
  if (texts.size() > 1) {
    std::string const common = commonBeginning(texts);
    return {common.size() > word.size() ? common : word, true};
  }
  return {isFinished(texts.front()) ? texts.front() + ' ' : texts.front(),
          false};
}

std::string escaped(std::string const& text) {
  std::string result;
  for (char c : text) {
    switch (c) {
      case '\n':
        result += "\\n";
        break;
      case '\t':
        result += "\\t";
        break;
      case '\\':
        result += "\\\\";
        break;
      default:
        result += c;
    }
  }
  return result;
}

Layout::Row asRow(Candidate const& candidate) {
  bool const silent = isReturn(candidate) && candidate.help.empty();
  return {candidate.completion, silent ? kReturnHelp : candidate.help};
}

}  // namespace

bool isPlaceholder(std::string const& text) {
  return text.size() > 2 && text.front() == '<' && text.back() == '>';
}

bool isReturn(Candidate const& candidate) {
  return candidate.completion == kReturn;
}

bool follows(Candidate const& candidate) {
  return !isReturn(candidate) && (candidate.token == QOR_CLI_TOKEN_OPTION ||
                                  candidate.token == QOR_CLI_TOKEN_AFTER_LINE);
}

std::vector<Candidate> merged(std::vector<Candidate> candidates) {
  std::stable_sort(candidates.begin(), candidates.end(), standsBefore);
  std::vector<Candidate> result;
  // Where those with the same text are: a folder may have very many names.
  std::unordered_map<std::string, std::vector<std::size_t>> places;
  for (Candidate& candidate : candidates) {
    if (candidate.completion.empty()) continue;
    auto& same = places[candidate.completion];
    bool const known = std::any_of(
        same.begin(), same.end(),
        [&](std::size_t i) { return mergeInto(result[i], candidate); });
    if (known) continue;
    same.push_back(result.size());
    result.push_back(std::move(candidate));
  }
  return result;
}

bool offerReturn(std::vector<Candidate> const& candidates) {
  return std::any_of(candidates.begin(), candidates.end(), isReturn);
}

void removeReturn(std::vector<Candidate>& candidates) {
  candidates.erase(
      std::remove_if(candidates.begin(), candidates.end(), isReturn),
      candidates.end());
}

Completion complete(std::string const& word,
                    std::vector<Candidate> const& candidates) {
  std::vector<std::string> const texts = textsBeginningWith(word, candidates);
  bool const otherWords =
      std::any_of(candidates.begin(), candidates.end(), isOtherWord);
  bool const finished = texts.empty() && std::any_of(candidates.begin(),
                                                     candidates.end(), follows);
  if (!finished) return completeFrom(texts, word, otherWords);
  Completion next =
      completeFrom(textsBeginningWith("", candidates), "", otherWords);
  next.word = word + ' ' + next.word;
  return next;
}

std::string list(std::vector<Candidate> const& candidates, Shown shown,
                 std::size_t width) {
  std::vector<Layout::Row> placeholders;
  for (Candidate const& candidate : candidates) {
    if (isPlaceholder(candidate.completion))
      placeholders.push_back(asRow(candidate));
  }
  std::vector<std::string> texts = textsBeginningWith("", candidates);
  std::transform(texts.begin(), texts.end(), texts.begin(), shown);
  return (texts.empty() ? "" : Layout::inColumns(texts, width)) +
         Layout::inTwoColumns(placeholders, width);
}

std::string helpList(std::vector<Candidate> const& candidates,
                     std::size_t width) {
  std::vector<Layout::Row> rowsToShow;
  rowsToShow.reserve(candidates.size());
  for (Candidate const& candidate : candidates) {
    rowsToShow.push_back(asRow(candidate));
  }
  return Layout::inTwoColumns(rowsToShow, width);
}

std::string rows(std::vector<Candidate> const& candidates) {
  std::string result;
  for (Candidate const& candidate : candidates) {
    result += std::to_string(candidate.token) + '\t' +
              escaped(candidate.completion) + '\t' + escaped(candidate.help) +
              '\t' + std::to_string(candidate.sortIndex.rank) + '\t' +
              escaped(candidate.sortIndex.key) + '\n';
  }
  return result;
}

}  // namespace Candidates
}  // namespace QorCliEngine
