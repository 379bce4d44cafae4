#include "pipeline/Pipeline.h"

#include <algorithm>
#include <utility>

#include "system/EngineErrors.h"
#include "system/Interrupts.h"

namespace QorCliEngine {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// How long output is held back for more of it to come: a program that only
// takes a breath does not print bit by bit.
constexpr milliseconds kPatience{200};

}  // namespace

template <class Action>
auto Pipeline::ofSource(Action const& action) const {
  try {
    StageClock const clock(sourceFigures_);
    return action();
  } catch (SourceFailure const& failure) {
    throw CommandFailure(sourceName_ + ": " + failure.what());
  }
}

Pipeline::Pipeline(std::string sourceName, std::vector<PipeStage> stages,
                   OutputWriter& output, Diagnostics& diagnostics)
    : sourceName_(std::move(sourceName)),
      stages_(std::move(stages)),
      between_(stages_.size()),
      output_(output),
      diagnostics_(diagnostics),
      sourceFigures_(diagnostics.sourceFigures()) {}

void Pipeline::run(Source& source, LineInstances& instances) {
  try {
    runStages(source, instances);
  } catch (...) {
    abandon();
    throw;
  }
  ofSource([&] { source.finish(); });
}

void Pipeline::runStages(Source& source, LineInstances& instances) {
  open(instances);
  ofSource([&] { source.start(); });
  pump(source);
  complete();
  output_.writeIfFull();
}

void Pipeline::open(LineInstances& instances) {
  for (std::size_t i = 0; i < stages_.size(); ++i) {
    stages_[i].open(instances, sinkOf(i));
  }
  flowFrom(1);
  diagnostics_.showRecords();
}

void Pipeline::pump(Source& source) {
  Source::State state = Source::State::kMore;
  while (state != Source::State::kEnd) {
    if (Interrupts::requested()) throw Interrupted();
    state = ofSource([&] { return source.read(chunker_); });
    if (state == Source::State::kIdle) {
      push(chunker_.takeLines());
      ofSource([&] { source.wait(patience()); });
    } else if (chunker_.full()) {
      push(chunker_.takeLines());
    }
  }
  push(chunker_.takeRest());
  chunker_ = LineChunker();  // what follows needs the memory
}

// Writes what has been held back for long enough, also when what is read goes
// on but nothing of it is printed.
void Pipeline::writeIfDue() {
  if (output_.buffer().empty()) return heldSince_.reset();
  if (!heldSince_) heldSince_ = steady_clock::now();
  if (patience() > 0) return;
  output_.flush();
  heldSince_.reset();
}

// For how many milliseconds nothing has to be written.
int Pipeline::patience() const {
  if (!heldSince_) return Source::kForEver;
  auto const held = std::chrono::duration_cast<milliseconds>(
      steady_clock::now() - *heldSince_);
  return static_cast<int>(std::max(kPatience - held, milliseconds(0)).count());
}

// `lines` has a NUL byte after it.
void Pipeline::push(std::string_view lines) {
  if (!lines.empty()) process(lines);
  writeIfDue();
}

void Pipeline::process(std::string_view lines) {
  if (sourceFigures_ != nullptr) sourceFigures_->out.add(lines);
  if (stages_.empty()) {
    output_.buffer() += lines;
  } else {
    stages_.front().process(lines, sinkOf(0));
    flowFrom(1);
  }
  diagnostics_.showRecords();
  output_.writeIfFull();
}

// Hands on what the stages before `stage` have printed.
void Pipeline::flowFrom(std::size_t stage) {
  for (; stage < stages_.size(); ++stage) {
    std::string& input = between_[stage - 1];
    if (input.empty()) continue;
    stages_[stage].process(input, sinkOf(stage));
    input.clear();
  }
}

// What a stage prints at its end still is input of the next one.
void Pipeline::complete() {
  for (std::size_t i = 0; i < stages_.size(); ++i) {
    stages_[i].complete(sinkOf(i));
    flowFrom(i + 1);
  }
}

void Pipeline::abandon() noexcept {
  for (PipeStage& stage : stages_) stage.abandon();
}

std::string& Pipeline::sinkOf(std::size_t stage) {
  return stage + 1 < stages_.size() ? between_[stage] : output_.buffer();
}

}  // namespace QorCliEngine
