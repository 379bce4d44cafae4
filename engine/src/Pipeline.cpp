#include "Pipeline.h"

#include <utility>

#include "EngineErrors.h"
#include "Interrupts.h"

namespace QorCliEngine {
namespace {

// How long output is held back while there is nothing new to read: a program
// that only takes a breath does not print bit by bit.
constexpr int kPatience = 200;  // milliseconds

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
      sourceFigures_(diagnostics.figures(0)) {}

void Pipeline::run(Source& source,
                   std::vector<PipeComponent> const& components) {
  try {
    runStages(source, components);
  } catch (...) {
    abandon();
    throw;
  }
  ofSource([&] { source.finish(); });
}

void Pipeline::runStages(Source& source,
                         std::vector<PipeComponent> const& components) {
  open(components);
  ofSource([&] { source.start(); });
  pump(source);
  complete();
  output_.writeIfFull();
}

void Pipeline::open(std::vector<PipeComponent> const& components) {
  for (std::size_t i = 0; i < stages_.size(); ++i) {
    stages_[i].open(components, sinkOf(i));
  }
  flowFrom(1);
  diagnostics_.showTrace();
}

void Pipeline::pump(Source& source) {
  Source::State state = Source::State::kMore;
  while (state != Source::State::kEnd) {
    if (Interrupts::requested()) throw Interrupted();
    state = ofSource([&] { return source.read(chunker_); });
    if (state == Source::State::kIdle) {
      push(chunker_.takeLines());
      if (wait(source, kPatience)) continue;
      output_.flush();
      wait(source, Source::kForEver);
    } else if (chunker_.full()) {
      push(chunker_.takeLines());
    }
  }
  push(chunker_.takeRest());
}

bool Pipeline::wait(Source& source, int milliseconds) const {
  return ofSource([&] { return source.wait(milliseconds); });
}

// `lines` has a NUL byte behind it.
void Pipeline::push(std::string_view lines) {
  if (lines.empty()) return;
  if (sourceFigures_ != nullptr) sourceFigures_->out.add(lines);
  if (stages_.empty()) {
    output_.buffer() += lines;
  } else {
    stages_.front().process(lines, sinkOf(0));
    flowFrom(1);
  }
  diagnostics_.showTrace();
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
  for (PipeStage& stage : stages_) {
    std::string dropped;
    try {
      stage.complete(dropped);
    } catch (CommandFailure const&) {
      // The failure that ended the line is the one to report.
    }
  }
}

std::string& Pipeline::sinkOf(std::size_t stage) {
  return stage + 1 < stages_.size() ? between_[stage] : output_.buffer();
}

}  // namespace QorCliEngine
