#include "ContextRules.h"

namespace QorCliPipe {
namespace {

constexpr char kSeparator[] = "   --\n";

}  // namespace

ContextRules::ContextRules(int after, int before, PipeCmd::FilterStruct& state,
                           std::vector<std::string>& sink)
    : after_(after), before_(before), state_(state), sink_(sink) {}

void ContextRules::wanted(std::string_view line) {
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
  sink_.emplace_back(line);
}

// The line that ends a run is dropped, not kept as leading context: with both
// kinds of context the run has ended one line earlier, with the last line of
// trailing context.
void ContextRules::unwanted(std::string_view line) {
  if (state_.runCounter == 0) {
    if (before_ != 0) keepForLater(line);
    return;
  }
  if (state_.trailingLinesLeft == 0) {
    state_.separatorPending = true;
    state_.runCounter = 0;
    return;
  }
  sink_.emplace_back(line);
  --state_.trailingLinesLeft;
  if (state_.trailingLinesLeft == 0 && before_ != 0) state_.runCounter = 0;
}

void ContextRules::keepForLater(std::string_view line) {
  state_.linesSkipped =
      state_.precedingLines.append(line, static_cast<std::size_t>(before_));
}

void ContextRules::separate() { sink_.emplace_back(kSeparator); }

}  // namespace QorCliPipe
