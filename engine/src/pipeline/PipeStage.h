#ifndef QOR_CLI_ENGINE_PIPE_STAGE_H
#define QOR_CLI_ENGINE_PIPE_STAGE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calls/Session.h"
#include "diagnostics/Diagnostics.h"
#include "pipeline/PieceSize.h"
#include "plugins/LineInstances.h"
#include "plugins/PipeComponent.h"

namespace QorCliEngine {

// Returns the name of a stage in messages. `number` counts from 1.
std::string stageName(std::size_t number, std::string const& text);

// A stage of a command line as it is run.
struct StageText {
  std::size_t number;  // its place in the line, from 1
  std::string typed;
  std::string full;  // with abbreviations in full

  // For messages, which show what was typed.
  std::string name() const { return stageName(number, typed); }
};

// One pipe command of a command line.
//
// It is opened, given the text in chunks, and completed. Every function appends
// what the command prints to `sink` and throws CommandFailure, with the lines
// that the failed call printed and without them in `sink`. One thread.
class PipeStage {
 public:
  // `actionId`: names the command to its component, used for no other.
  // Not owned are `session`; `diagnostics`, which is told of calls and of
  // failures; and `figures`. Both of these may be null.
  PipeStage(StageText text, unsigned actionId, Session& session,
            Diagnostics* diagnostics, StageFigures* figures);

  // Finds the component that knows the command, and takes its instance: it runs
  // the command over an empty text, so that wrong usage shows before there is
  // any other. A plug-in that has no instance left does not know it.
  void open(LineInstances& instances, std::string& sink);

  // Whether open() would find one of these components, and the command would
  // take the words of the line: opens it and tells it at once that there is no
  // input. What it prints is dropped.
  bool canOpen(std::vector<PipeComponent> const& components);

  // `input`: whole lines, with a NUL byte after them. When interrupts are
  // caught, the command is given them in pieces of a size that suits its speed,
  // and Interrupted is thrown before a piece if the line is to end.
  void process(std::string_view input, std::string& sink);

  // Tells the component that the input is complete, if it has been called at
  // all and has not been told.
  void complete(std::string& sink);

  // As complete(), after a failure: what is printed is dropped, and another
  // failure is none.
  void abandon() noexcept;

 private:
  bool openBy(std::vector<PipeComponent> const& components, std::string& sink);
  void processPiece(char const* piece, std::string& sink);
  QorReturnT execute(char const* input, unsigned& matches, std::string& sink);
  void countOutput(std::string const& sink, std::size_t mark);
  template <class Call>
  QorReturnT call(Call const& call, std::string& sink);
  [[noreturn]] void fail(std::string const& reason, std::size_t mark,
                         std::string& sink) const;

  StageText text_;
  unsigned actionId_;
  Session& session_;
  Diagnostics* diagnostics_;
  StageFigures* figures_;
  PieceSize pieceSize_;
  std::optional<PipeComponent> component_;
};

}  // namespace QorCliEngine

#endif
