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

void Diagnostics::beginStages(std::string const& source) {
  stages_.clear();
  addStage(source);
}

StageFigures* Diagnostics::sourceFigures() {
  return timing_ ? &stages_.front() : nullptr;
}

StageFigures* Diagnostics::addStage(std::string const& text) {
  if (!timing_) return nullptr;
  return &stages_.emplace_back(StageFigures{text, {}, {}, {}});
}

void Diagnostics::endLine() {
  showTrace();
  if (!stages_.empty()) Messages::print(figuresTable(stages_));
  stages_.clear();
}

}  // namespace QorCliEngine
