#include "ContextRules.h"

#include <algorithm>

#include "LineFreeList.h"
#include "TextSearch.h"

namespace QorCliPipe {
namespace {

constexpr char kSeparator[] = "   --\n";

// Removes the first line from `lines` and returns it, with its line feed.
std::string_view takeLine(std::string_view& lines) {
  std::string_view const line = lines.substr(0, lines.find('\n') + 1);
  lines.remove_prefix(line.size());
  return line;
}

// The last `count` lines of `lines`, or all of them if there are fewer.
std::string_view lastLines(std::string_view lines, std::size_t count) {
  std::size_t begin = lines.size();
  while (begin != 0 && count-- != 0) {
    begin = QorCliMatching::beginOfLine(lines, begin - 1);
  }
  return lines.substr(begin);
}

}  // namespace

ContextRules::ContextRules(int after, int before, PipeCmd::FilterStruct& state,
                           std::vector<std::string>& sink)
    : after_(after), before_(before), state_(state), sink_(sink) {}

void ContextRules::selected(std::string_view lines) {
  while (!lines.empty()) selectedLine(takeLine(lines));
}

void ContextRules::selectedLine(std::string_view line) {
  if (after_ != 0) {
    state_.trailingLinesLeft = after_;
    if (state_.separatorPending && before_ == 0) {
      separate();
      state_.separatorPending = false;
    }
    ++state_.runCounter;
  }
  if (before_ != 0) {
    if (state_.linesSkipped && state_.separatorPending) separate();
    state_.linesSkipped = false;
    state_.separatorPending = true;
    state_.precedingLines.moveTo(sink_);
  }
  appendLine(line, sink_);
}

void ContextRules::unselected(std::string_view lines) {
  while (!lines.empty() && state_.runCounter != 0) {
    unselectedLineInRun(takeLine(lines));
  }
  if (!lines.empty() && before_ != 0) keepForLater(lines);
}

// The line that ends a run is dropped, not kept as leading context. With both
// kinds of context, the run ends one line earlier, with the last line of
// trailing context.
void ContextRules::unselectedLineInRun(std::string_view line) {
  if (state_.trailingLinesLeft == 0) {
    state_.separatorPending = true;
    state_.runCounter = 0;
    return;
  }
  appendLine(line, sink_);
  --state_.trailingLinesLeft;
  if (state_.trailingLinesLeft == 0 && before_ != 0) state_.runCounter = 0;
}

// Only the last lines can become context; the others are skipped. After a call
// with a larger limit, the ring buffer holds more lines than this limit: each
// new line then replaces one.
void ContextRules::keepForLater(std::string_view lines) {
  auto const limit = static_cast<std::size_t>(before_);
  std::string_view last =
      lastLines(lines, std::max(limit, state_.precedingLines.size()));
  bool const skipped = last.size() != lines.size();
  while (!last.empty()) {
    state_.linesSkipped =
        state_.precedingLines.append(takeLine(last), limit) || skipped;
  }
}

void ContextRules::separate() { sink_.emplace_back(kSeparator); }

}  // namespace QorCliPipe
