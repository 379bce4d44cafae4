#ifndef QOR_CLI_ENGINE_PIPELINE_H
#define QOR_CLI_ENGINE_PIPELINE_H

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/Diagnostics.h"
#include "output/OutputWriter.h"
#include "pipeline/PipeStage.h"
#include "sources/LineChunker.h"
#include "sources/Source.h"

namespace QorCliEngine {

// A command line at work: a source's text runs through pipe commands to the
// output, chunk by chunk, so that memory does not grow with the text.
//
// Every stage that was called is told that its input is complete: in order, at
// the end of the text and also after a failure, when what it still prints is
// dropped. One thread.
class Pipeline {
 public:
  // `output` and `diagnostics` are not owned; the latter has the figures of the
  // line's stages. `sourceName` stands for the source in messages.
  Pipeline(std::string sourceName, std::vector<PipeStage> stages,
           OutputWriter& output, Diagnostics& diagnostics);

  // Runs the line once. Throws CommandFailure, OutputClosed or Interrupted;
  // what was printed before is then in the output's buffer.
  void run(Source& source, LineInstances& instances);

 private:
  void runStages(Source& source, LineInstances& instances);
  void open(LineInstances& instances);
  void pump(Source& source);
  void writeIfDue();
  int patience() const;
  void push(std::string_view lines);
  void process(std::string_view lines);
  void flowFrom(std::size_t stage);
  void complete();
  void abandon() noexcept;
  template <class Action>
  auto ofSource(Action const& action) const;
  std::string& sinkOf(std::size_t stage);

  std::string sourceName_;
  std::vector<PipeStage> stages_;
  std::vector<std::string> between_;  // [i]: printed by stage i for stage i + 1
  OutputWriter& output_;
  Diagnostics& diagnostics_;
  StageFigures* sourceFigures_;  // null when none are wanted
  LineChunker chunker_;
  // When the oldest output came that is held back, if any is.
  std::optional<std::chrono::steady_clock::time_point> heldSince_;
};

}  // namespace QorCliEngine

#endif
