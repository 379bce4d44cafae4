#include "pipeline/PipeStage.h"

#include <chrono>
#include <stdexcept>
#include <utility>

#include "calls/CallContext.h"
#include "calls/StatusText.h"
#include "system/EngineErrors.h"
#include "system/Interrupts.h"

namespace QorCliEngine {
namespace {

// Appends what a component prints to a text: whole lines, each with a line
// feed. Empty texts add nothing.
class OutputContext : public CallContext {
 public:
  OutputContext(Session& session, std::string& sink)
      : CallContext(session), sink_(sink) {}

 protected:
  void acceptOutput(char const* text) override {
    if (*text == '\0') return;
    sink_ += text;
    if (sink_.back() != '\n') sink_ += '\n';
  }

 private:
  std::string& sink_;
};

}  // namespace

std::string stageName(std::size_t number, std::string const& text) {
  return "stage " + std::to_string(number) + " (" + text + ')';
}

PipeStage::PipeStage(StageText text, unsigned actionId, Session& session,
                     Diagnostics* diagnostics, StageFigures* figures)
    : text_(std::move(text)),
      actionId_(actionId),
      session_(session),
      diagnostics_(diagnostics),
      figures_(figures) {}

void PipeStage::open(LineInstances& instances, std::string& sink) {
  if (diagnostics_ != nullptr) diagnostics_->beginCall();
  for (std::size_t i = 0; i < instances.plugins(); ++i) {
    if (openBy(instances.unused(i), sink)) return instances.take(i);
  }
  std::string const failure = instances.failure();
  if (!failure.empty()) fail(failure, sink.size(), sink);
  throw NotUnderstood(text_.number,
                      text_.name() + ": unknown or incomplete command");
}

bool PipeStage::canOpen(std::vector<PipeComponent> const& components) {
  std::string dropped;
  bool opens = false;
  try {
    opens = openBy(components, dropped);
    complete(dropped);
  } catch (CommandFailure const&) {
    abandon();
  }
  return opens;
}

// Returns whether one of the components knows the command.
bool PipeStage::openBy(std::vector<PipeComponent> const& components,
                       std::string& sink) {
  std::size_t const mark = sink.size();
  for (PipeComponent const& component : components) {
    component_ = component;
    unsigned matches = 0;
    QorReturnT const status = execute("", matches, sink);
    if (matches != 0 && status != 0) {
      fail("failed with " + statusText(status), mark, sink);
    }
    if (matches != 0) {
      countOutput(sink, mark);
      return true;
    }
    sink.resize(mark);
  }
  component_.reset();
  return false;
}

// The room is for what most commands print of the input, so that a long line is
// not copied again when more is printed after it. Unused memory costs nothing.
void PipeStage::process(std::string_view input, std::string& sink) {
  std::size_t const room = sink.size() + input.size() + input.size() / 8;
  if (sink.capacity() < room) sink.reserve(room);
  if (!Interrupts::installed()) return processPiece(input.data(), sink);
  while (!input.empty()) {
    if (Interrupts::requested()) throw Interrupted();
    std::string_view const piece = pieceSize_.cut(input);
    input.remove_prefix(piece.size());
    auto const begin = std::chrono::steady_clock::now();
    // What is last has its NUL byte already.
    processPiece(input.empty() ? piece.data() : std::string(piece).c_str(),
                 sink);
    pieceSize_.note(std::chrono::steady_clock::now() - begin);
  }
}

void PipeStage::processPiece(char const* piece, std::string& sink) {
  std::size_t const mark = sink.size();
  unsigned matches = 0;
  if (figures_ != nullptr) figures_->in.add(piece);
  QorReturnT const status = execute(piece, matches, sink);
  if (status != 0) fail("failed with " + statusText(status), mark, sink);
  countOutput(sink, mark);
}

void PipeStage::complete(std::string& sink) {
  if (!component_) return;
  PipeComponent const component = *component_;
  component_.reset();
  std::size_t const mark = sink.size();
  QorReturnT const status = call(
      [&](CallContext& context) {
        return component.inputComplete(context, actionId_);
      },
      sink);
  if (status != 0) {
    fail("failed at the end of its input with " + statusText(status), mark,
         sink);
  }
  countOutput(sink, mark);
}

void PipeStage::abandon() noexcept {
  diagnostics_ = nullptr;
  std::string dropped;
  try {
    complete(dropped);
  } catch (CommandFailure const&) {
    // The failure that came before is the one to report.
  }
}

QorReturnT PipeStage::execute(char const* input, unsigned& matches,
                              std::string& sink) {
  PipeRequest const request{QOR_CLI_ACTION_EXECUTE, actionId_, text_.full,
                            input};
  return call(
      [&](CallContext& context) {
        return component_->use(context, request, matches);
      },
      sink);
}

void PipeStage::countOutput(std::string const& sink, std::size_t mark) {
  if (figures_ != nullptr) {
    figures_->out.add(std::string_view(sink).substr(mark));
  }
}

template <class Call>
QorReturnT PipeStage::call(Call const& call, std::string& sink) {
  std::size_t const mark = sink.size();
  if (diagnostics_ != nullptr) diagnostics_->beginCall();
  try {
    StageClock const clock(figures_);
    OutputContext context(session_, sink);
    return call(context);
  } catch (std::exception const& exception) {
    fail(exception.what(), mark, sink);
  }
}

void PipeStage::fail(std::string const& reason, std::size_t mark,
                     std::string& sink) const {
  std::string const lines = sink.substr(mark);
  sink.resize(mark);
  if (diagnostics_ != nullptr) diagnostics_->noteFailure();
  throw CommandFailure(text_.name() + ": " + reason, lines, text_.number);
}

}  // namespace QorCliEngine
