#ifndef QOR_CLI_ENGINE_COMMAND_LINE_H
#define QOR_CLI_ENGINE_COMMAND_LINE_H

#include <cstddef>
#include <string>
#include <vector>

namespace QorCliEngine {

// How a command line is taken apart.
//
// A line is stages separated by "|". Quoted text begins at a double quote and
// ends at the next one that has no backslash in front, whatever stands before
// the backslash; when all have one, at the last of them; when there is none, at
// the end of the line. In it neither "|" nor white space separates anything.
// Quotes and backslashes stay in the text.
namespace CommandLine {

// Whether nothing is to be run: `line` is of white space only, or a comment,
// which begins with "#" or "!".
bool isSilent(std::string const& line);

// The stages of `line`, without white space around them. A stage may be empty;
// a line of white space only has one, which is.
std::vector<std::string> stages(std::string const& line);

// Where stage `number` of `line`, counted from 1, ends, without the white space
// after it. The line has that many stages.
std::size_t stageEnd(std::string const& line, std::size_t number);

// The first word of a stage: up to the first white space.
std::string firstWord(std::string const& stage);

// What a line that has been typed up to its end is in the middle of.
struct TypedEnd {
  // The stage that is being typed: 0 is the first.
  std::size_t stageNumber = 0;
  // Where the stage's text begins: leading white space is not part of it.
  std::size_t stageBegin = 0;
  // Where the word that is being typed begins; the end of the line when the
  // last word is finished.
  std::size_t wordBegin = 0;
  bool insideQuotes = false;
};

TypedEnd typedEnd(std::string const& line);

// Where the words of the last stage end, each after its last character, in
// order.
std::vector<std::size_t> wordEnds(std::string const& line);

// The last word of the last stage, with its quotes; empty when that has none.
std::string lastWord(std::string const& line);

// Where `text`, which is not empty, stands in a word of stage `number`, counted
// from 1: in the last word that has it; npos when there is none.
std::size_t findInStage(std::string const& line, std::size_t number,
                        std::string const& text);

// The index of a quote in `line` that is not closed; npos when there is none.
std::size_t openQuote(std::string const& line);

// A word without its quotes: if it begins with a double quote, that and a
// closing one are taken away, and escaped quotes in between become quotes.
std::string unquoted(std::string const& word);

}  // namespace CommandLine
}  // namespace QorCliEngine

#endif
