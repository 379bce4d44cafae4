#ifndef QOR_CLI_ENGINE_ABBREVIATIONS_H
#define QOR_CLI_ENGINE_ABBREVIATIONS_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "output/Candidates.h"

namespace QorCliEngine {

// Writes abbreviated command words in full: "sh fi x" becomes "show file x".
//
// Command words are the first words of a stage, up to the first that may be an
// argument: one for which a placeholder is offered, one in quotes, an option.
// A word that is a command word as it stands is left alone, also where it is
// the beginning of another; so are a word that begins none, and what stands
// after it. One thread.
class Abbreviations {
 public:
  // Returns the candidates for completing a line. May throw CommandFailure, and
  // the word that the line ends with is then none that is known.
  using Ask = std::function<std::vector<Candidate>(std::string const& line)>;

  explicit Abbreviations(Ask ask) : ask_(std::move(ask)) {}

  // Whether the word that a line ends with is one to expand: not while it is
  // being typed.
  enum class Last { kTyped, kFinished };

  // An abbreviation of several command words.
  struct Ambiguity {
    std::size_t begin;  // of the word, in the line that was given
    std::string word;
    std::vector<std::string> choices;

    // In plain words.
    std::string sentence() const;
  };

  struct Expansion {
    std::string line;
    // Why not all abbreviations are expanded.
    std::optional<Ambiguity> ambiguity;
  };

  // Expands the last stage of `line`. Asks once for each command word, and once
  // for the word after them; for kMostWords at most.
  Expansion expand(std::string const& line, Last last) const;

  static constexpr std::size_t kMostWords = 8;  // of a command

 private:
  std::vector<Candidate> ask(std::string const& line) const;

  Ask ask_;
};

}  // namespace QorCliEngine

#endif
