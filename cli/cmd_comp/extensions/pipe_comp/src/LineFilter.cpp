#include "LineFilter.h"

#include <Poco/Exception.h>

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

// Lines that do not match are pushed together, so that of many the context
// rules have to keep the last ones only.
void LineFilter::filter(std::string_view text, bool invert,
                        ContextRules& rules) {
  text = text.substr(0, text.rfind('\n') + 1);
  search_.reset(text);
  std::size_t pushed = 0;  // so far: the lines in front of it
  auto const pushUnmatched = [&](std::size_t end) {
    if (end != pushed) push(text.substr(pushed, end - pushed), invert, rules);
    pushed = end;
  };
  std::size_t line = nextCandidate(text, 0);
  try {
    while (line < text.size()) {
      std::size_t const next = text.find('\n', line) + 1;
      if (matches(text.substr(line, next - 1 - line))) {
        pushUnmatched(line);
        push(text.substr(line, next - line), !invert, rules);
        pushed = next;
      }
      line = nextCandidate(text, next);
    }
  } catch (Poco::RegularExpressionException const&) {
    pushUnmatched(line);
    throw;
  }
  pushUnmatched(text.size());
}

}  // namespace QorCliPipe
