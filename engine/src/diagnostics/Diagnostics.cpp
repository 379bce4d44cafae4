#include "diagnostics/Diagnostics.h"

#include "diagnostics/TraceWalk.h"
#include "output/Messages.h"

namespace QorCliEngine {

Diagnostics::Diagnostics(bool trace, bool timing) : timing_(timing) {
  if (trace) trace_.emplace();
}

Diagnostics::Line::Line(Diagnostics& diagnostics) : diagnostics_(diagnostics) {
  // What was traced before belongs to loading the plug-ins, or to Tab and "?".
  diagnostics_.dropTrace();
}

Diagnostics::Line::~Line() { diagnostics_.endLine(); }

void Diagnostics::dropTrace() {
  if (trace_) trace_->take();
}

void Diagnostics::showTrace() {
  if (trace_) Messages::print(traceWalk(trace_->take()));
}

void Diagnostics::beginStages(std::vector<std::string> const& texts) {
  if (!timing_) return;
  for (std::string const& text : texts) stages_.push_back({text, {}, {}, {}});
}

StageFigures* Diagnostics::figures(std::size_t stage) {
  return timing_ ? &stages_.at(stage) : nullptr;
}

void Diagnostics::endLine() {
  showTrace();
  if (!stages_.empty()) Messages::print(figuresTable(stages_));
  stages_.clear();
}

}  // namespace QorCliEngine
