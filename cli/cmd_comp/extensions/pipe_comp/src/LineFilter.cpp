#include "LineFilter.h"

#include "LineBegin.h"

namespace QorCliPipe {
namespace {

void push(std::string_view lines, bool wanted, ContextRules& rules) {
  if (wanted) {
    rules.wanted(lines);
  } else {
    rules.unwanted(lines);
  }
}

}  // namespace

LineFilter::LineFilter(std::string const& pattern, bool ignoreCase,
                       Skipping skipping)
    : pattern_(pattern),
      ignoreCase_(ignoreCase),
      matcher_(pattern, ignoreCase),
      required_(skipping == Skipping::kOn ? requiredText(pattern)
                                          : RequiredText{}),
      search_(required_.anyOf, ignoreCase) {}

bool LineFilter::isFor(std::string const& pattern, bool ignoreCase) const {
  return ignoreCase == ignoreCase_ && pattern == pattern_;
}

bool LineFilter::matches(std::string_view line) {
  return required_.sufficient || matcher_.matches(line);
}

// The begin of the next line, at `begin` or behind it, that may match.
std::size_t LineFilter::nextCandidate(std::string_view text,
                                      std::size_t begin) {
  if (search_.empty()) return begin;
  std::size_t const place = search_.find(begin);
  if (place == std::string_view::npos) return text.size();
  return begin + beginOfLine(text.substr(begin), place - begin);
}

void LineFilter::filter(std::string_view text, bool invert,
                        ContextRules& rules) {
  text = text.substr(0, text.rfind('\n') + 1);
  search_.reset(text);
  std::size_t begin = 0;
  while (begin < text.size()) {
    std::size_t const line = nextCandidate(text, begin);
    if (line != begin) push(text.substr(begin, line - begin), invert, rules);
    if (line == text.size()) return;
    std::size_t const feed = text.find('\n', line);
    bool const match = matches(text.substr(line, feed - line));
    push(text.substr(line, feed + 1 - line), match != invert, rules);
    begin = feed + 1;
  }
}

}  // namespace QorCliPipe
