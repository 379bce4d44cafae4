#include "commands/CommandLine.h"

#include <Poco/Ascii.h>
#include <Poco/String.h>

namespace QorCliEngine {
namespace CommandLine {
namespace {

// The index of the quote that closes the one at `open`; the end of the line, if
// there is none. The command tree's tokenizer has the same rule: otherwise what
// is one word to it could be cut in two here.
std::size_t closingQuote(std::string const& line, std::size_t open) {
  std::size_t quote = line.find('"', open + 1);
  while (quote != std::string::npos && line[quote - 1] == '\\') {
    quote = line.find('"', quote + 1);
  }
  if (quote != std::string::npos) return quote;
  std::size_t const last = line.rfind('"');
  return last == open ? line.size() : last;
}

// Follows a line character by character through quoted text.
class QuoteTracker {
 public:
  // `line` is not owned.
  explicit QuoteTracker(std::string const& line) : line_(line) {}

  // Whether the character at `i` is an ordinary one outside quotes. To be asked
  // for one character after the other.
  bool isOutside(std::size_t i) {
    if (i < end_) return false;
    if (line_[i] != '"') return true;
    begin_ = i;
    end_ = closingQuote(line_, i) + 1;
    return false;
  }

  // Whether the line ends in quoted text that is not closed.
  bool inside() const { return end_ > line_.size(); }

  // Where the last quoted text begins.
  std::size_t begin() const { return begin_; }

 private:
  std::string const& line_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;  // after the last quoted text
};

bool isSpace(char c) {
  return Poco::Ascii::isSpace(static_cast<unsigned char>(c));
}

}  // namespace

bool isSilent(std::string const& line) {
  std::size_t begin = 0;
  while (begin < line.size() && isSpace(line[begin])) ++begin;
  return begin == line.size() || line[begin] == '#' || line[begin] == '!';
}

std::vector<std::string> stages(std::string const& line) {
  std::vector<std::string> result(1);
  QuoteTracker quotes(line);
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (quotes.isOutside(i) && line[i] == '|') {
      result.emplace_back();
    } else {
      result.back() += line[i];
    }
  }
  for (std::string& stage : result) Poco::trimInPlace(stage);
  return result;
}

std::size_t stageEnd(std::string const& line, std::size_t number) {
  QuoteTracker quotes(line);
  std::size_t end = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    bool const separates = quotes.isOutside(i) && line[i] == '|';
    if (separates && --number == 0) break;
    if (!isSpace(line[i])) end = i + 1;
  }
  return end;
}

std::string firstWord(std::string const& stage) {
  std::size_t end = 0;
  while (end < stage.size() && !isSpace(stage[end])) ++end;
  return stage.substr(0, end);
}

TypedEnd typedEnd(std::string const& line) {
  TypedEnd end;
  QuoteTracker quotes(line);
  bool stageBegun = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    bool const outside = quotes.isOutside(i);
    bool const separator = outside && line[i] == '|';
    bool const gap = outside && isSpace(line[i]);
    if (separator) ++end.stageNumber;
    if (separator || (gap && !stageBegun)) {
      stageBegun = false;
      end.stageBegin = i + 1;
    } else {
      stageBegun = true;
    }
    if (separator || gap) end.wordBegin = i + 1;
  }
  end.insideQuotes = quotes.inside();
  return end;
}

std::vector<std::size_t> wordEnds(std::string const& line) {
  std::vector<std::size_t> ends;
  QuoteTracker quotes(line);
  bool inWord = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    bool const outside = quotes.isOutside(i);
    bool const separator = outside && line[i] == '|';
    bool const wasInWord = inWord;
    inWord = !separator && !(outside && isSpace(line[i]));
    if (wasInWord && !inWord) ends.push_back(i);
    if (separator) ends.clear();
  }
  if (inWord) ends.push_back(line.size());
  return ends;
}

std::string lastWord(std::string const& line) {
  std::vector<std::size_t> const ends = wordEnds(line);
  std::string const typed = line.substr(0, ends.empty() ? 0 : ends.back());
  return typed.substr(typedEnd(typed).wordBegin);
}

std::size_t findInStage(std::string const& line, std::size_t number,
                        std::string const& text) {
  std::string typed = line.substr(0, stageEnd(line, number));
  std::vector<std::size_t> const ends = wordEnds(typed);
  for (auto end = ends.rbegin(); end != ends.rend(); ++end) {
    typed.resize(*end);
    std::size_t const found = typed.find(text, typedEnd(typed).wordBegin);
    if (found != std::string::npos) return found;
  }
  return std::string::npos;
}

std::size_t openQuote(std::string const& line) {
  QuoteTracker quotes(line);
  for (std::size_t i = 0; i < line.size(); ++i) quotes.isOutside(i);
  return quotes.inside() ? quotes.begin() : std::string::npos;
}

std::string unquoted(std::string const& word) {
  if (word.empty() || word.front() != '"') return word;
  bool const closed = word.size() > 1 && word.back() == '"';
  std::string const inner = word.substr(1, word.size() - (closed ? 2 : 1));
  return Poco::replace(inner, "\\\"", "\"");
}

}  // namespace CommandLine
}  // namespace QorCliEngine
