#include "CommandLine.h"

#include <Poco/Ascii.h>
#include <Poco/String.h>

namespace QorCliEngine {
namespace CommandLine {
namespace {

// Follows a line character by character through quoted text.
class QuoteTracker {
 public:
  // Whether `c`, the line's next character, is an ordinary one outside quotes.
  bool isOutside(char c) {
    if (c == '"' && !escaped_) {
      inside_ = !inside_;
      return false;
    }
    escaped_ = inside_ && c == '\\' && !escaped_;
    return !inside_;
  }

  bool inside() const { return inside_; }

 private:
  bool inside_ = false;
  bool escaped_ = false;
};

bool isSpace(char c) {
  return Poco::Ascii::isSpace(static_cast<unsigned char>(c));
}

}  // namespace

std::vector<std::string> stages(std::string const& line) {
  std::vector<std::string> result(1);
  QuoteTracker quotes;
  for (char c : line) {
    if (quotes.isOutside(c) && c == '|') {
      result.emplace_back();
    } else {
      result.back() += c;
    }
  }
  for (std::string& stage : result) Poco::trimInPlace(stage);
  return result;
}

std::string firstWord(std::string const& stage) {
  std::size_t end = 0;
  while (end < stage.size() && !isSpace(stage[end])) ++end;
  return stage.substr(0, end);
}

TypedEnd typedEnd(std::string const& line) {
  TypedEnd end;
  QuoteTracker quotes;
  bool stageBegun = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    bool const outside = quotes.isOutside(line[i]);
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

std::string unquoted(std::string const& word) {
  if (word.empty() || word.front() != '"') return word;
  bool const closed = word.size() > 1 && word.back() == '"';
  std::string const inner = word.substr(1, word.size() - (closed ? 2 : 1));
  return Poco::replace(inner, "\\\"", "\"");
}

}  // namespace CommandLine
}  // namespace QorCliEngine
