#include "output/PagedOutput.h"

#include <unistd.h>

#include "output/Messages.h"
#include "output/Terminal.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

// Whether `text` leaves no row for the prompt.
bool overflows(std::string const& text) {
  Terminal::Size const terminal = Terminal::size();
  std::size_t rows = 1;
  std::size_t cells = 0;
  for (char c : text) {
    bool const rowEnds = c == '\n' || ++cells > terminal.columns;
    if (!rowEnds) continue;
    cells = c == '\n' ? 0 : 1;
    if (++rows > terminal.rows) return true;
  }
  return false;
}

}  // namespace

void PagedOutput::writeIfFull() {
  if (!direct_ && !pager_) {
    if (!overflows(shown())) return;
    startPager();
  }
  if (pager_) {
    writeToPager();
  } else {
    writeTo(STDOUT_FILENO);
  }
}

void PagedOutput::flush() {
  if (!pager_) direct_ = true;
  writeIfFull();
}

void PagedOutput::finish() {
  writeIfFull();
  if (pager_) finishPager();
  direct_ = false;
  writeTo(STDOUT_FILENO);
  if (complaint_.empty()) return;
  Messages::show(complaint_ + "; output is no longer paged");
  complaint_.clear();
}

void PagedOutput::drop() {
  begun_ = true;
  unread_.clear();
  OutputWriter::drop();
}

void PagedOutput::startPager() {
  std::string const command = noPager_ ? "" : Pager::chosen();
  direct_ = command.empty();
  if (direct_) return;
  begun_ = false;
  try {
    pager_.emplace(command);
  } catch (SourceFailure const& failure) {
    giveUpPaging(failure.what());
  }
}

// Returns whether the pager could be run; what it should have shown is in the
// buffer again otherwise.
bool PagedOutput::finishPager() {
  bool const run = pager_->finish();
  pager_.reset();
  if (!run) {
    giveUpPaging("cannot run the pager \"" + Pager::chosen() + '"');
    buffer() = unread_;
  }
  unread_.clear();
  return run;
}

void PagedOutput::giveUpPaging(std::string const& reason) {
  complaint_ = reason;
  noPager_ = true;
  direct_ = true;
}

// What fits into a pipe can be written although nobody will ever read it.
void PagedOutput::writeToPager() {
  if (!begun_) unread_ += buffer();
  try {
    writeTo(pager_->input());
  } catch (OutputClosed const&) {
    if (finishPager()) throw Interrupted();
    return writeTo(STDOUT_FILENO);
  }
  if (unread_.size() <= pager_->capacity()) return;
  begun_ = true;
  unread_.clear();
}

}  // namespace QorCliEngine
