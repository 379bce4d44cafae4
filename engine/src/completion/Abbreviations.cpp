#include "completion/Abbreviations.h"

#include <Poco/String.h>

#include <algorithm>

#include "AutoCompleteNode.h"
#include "commands/CommandLine.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

using QorCliUtilities::AutoCompleteNode;

bool mayBeCommandWord(std::string const& word) {
  return word.front() != '-' && word.find('"') == std::string::npos;
}

// Whether the word may be an argument, for which a placeholder stands.
bool mayBeArgument(std::vector<Candidate> const& candidates) {
  return std::any_of(candidates.begin(), candidates.end(),
                     [](Candidate const& candidate) {
                       return Candidates::isPlaceholder(candidate.completion) &&
                              !Candidates::isReturn(candidate) &&
                              !Candidates::follows(candidate);
                     });
}

// The command words that begin as `word` does.
std::vector<std::string> commandWords(
    std::string const& word, std::vector<Candidate> const& candidates) {
  std::vector<std::string> words;
  for (Candidate const& candidate : Candidates::merged(candidates)) {
    bool const completes = candidate.token == QOR_CLI_TOKEN_WORD ||
                           candidate.token == QOR_CLI_TOKEN_PIPE_COMMAND;
    if (completes && mayBeCommandWord(candidate.completion) &&
        AutoCompleteNode::match(candidate.completion, word)) {
      words.push_back(candidate.completion);
    }
  }
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

// A command tree does not offer a word that is complete, but what follows it.
bool isComplete(std::string const& word, std::vector<std::string> const& words,
                std::vector<Candidate> const& candidates) {
  auto const isWord = [&](std::string const& each) {
    return Poco::icompare(each, word) == 0;
  };
  auto const isBehind = [](Candidate const& candidate) {
    return Candidates::isReturn(candidate) || Candidates::follows(candidate);
  };
  return std::any_of(words.begin(), words.end(), isWord) ||
         std::any_of(candidates.begin(), candidates.end(), isBehind);
}

}  // namespace

std::string Abbreviations::Ambiguity::sentence() const {
  return '"' + word + "\" is ambiguous: " +
         Poco::cat(std::string(", "), choices.begin(), choices.end());
}

Abbreviations::Expansion Abbreviations::expand(std::string const& line,
                                               Last last) const {
  Expansion result;
  std::size_t taken = 0;  // of `line`
  std::size_t count = 0;
  for (std::size_t const end : CommandLine::wordEnds(line)) {
    bool const typed = last == Last::kTyped && end == line.size();
    std::size_t const begin =
        CommandLine::typedEnd(line.substr(0, end)).wordBegin;
    std::string const word = line.substr(begin, end - begin);
    if (typed || ++count > kMostWords || !mayBeCommandWord(word)) break;
    std::string const before = result.line + line.substr(taken, begin - taken);
    std::vector<Candidate> const candidates = ask(before + word);
    if (mayBeArgument(candidates)) break;
    auto const words = commandWords(word, candidates);
    bool const complete = isComplete(word, words, candidates);
    if (!complete && words.size() > 1) result.ambiguity = {begin, word, words};
    if (!complete && words.size() != 1) break;
    result.line = before + (complete ? word : words.front());
    taken = end;
  }
  result.line += line.substr(taken);
  return result;
}

std::vector<Candidate> Abbreviations::ask(std::string const& line) const {
  try {
    return ask_(line);
  } catch (CommandFailure const&) {
    return {};
  }
}

}  // namespace QorCliEngine
