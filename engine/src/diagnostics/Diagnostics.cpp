#include "diagnostics/Diagnostics.h"

#include <utility>

#include "diagnostics/TraceWalk.h"
#include "output/Messages.h"

namespace QorCliEngine {

Diagnostics::Diagnostics(bool trace, bool timing)
    : trace_(trace),
      timing_(timing),
      records_(trace ? LogCapture::Kind::kTrace : LogCapture::Kind::kErrors) {}

Diagnostics::~Diagnostics() {
  if (!trace_) showRecords();
}

Diagnostics::Line::Line(Diagnostics& diagnostics) : diagnostics_(diagnostics) {
  // What was traced before belongs to loading the plug-ins, or to Tab and "?".
  diagnostics_.dropRecords();
}

Diagnostics::Line::~Line() { diagnostics_.endLine(); }

void Diagnostics::dropRecords() {
  records_.drop();
  callBegin_ = 0;
  kept_.clear();
  reason_.reset();
}

void Diagnostics::dropTrace() {
  if (trace_) dropRecords();
}

void Diagnostics::showRecords() {
  show(std::exchange(kept_, "") + records_.take());
  callBegin_ = 0;
}

void Diagnostics::beginCall() { callBegin_ = records_.size(); }

void Diagnostics::noteFailure() {
  std::string const records = records_.take();
  std::string others = records.substr(callBegin_);
  reason_ = FailureReason::takeFrom(others);
  kept_ += trace_ ? records : records.substr(0, callBegin_) + others;
  callBegin_ = 0;
}

std::optional<FailureReason> Diagnostics::takeReason() {
  showRecords();
  return std::exchange(reason_, std::nullopt);
}

void Diagnostics::show(std::string const& records) const {
  Messages::print(trace_ ? traceWalk(records) : records);
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
  showRecords();
  if (!stages_.empty()) Messages::print(figuresTable(stages_));
  stages_.clear();
}

}  // namespace QorCliEngine
