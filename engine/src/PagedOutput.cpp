#include "PagedOutput.h"

#include <unistd.h>

#include <iostream>

#include "EngineErrors.h"
#include "Terminal.h"

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
    if (!overflows(buffer())) return;
    startPager();
  }
  if (pager_) {
    writeToPager();
  } else {
    writeTo(STDOUT_FILENO);
  }
}

void PagedOutput::flush() {
  if (!pager_) direct_ = !buffer().empty() || direct_;
  writeIfFull();
}

void PagedOutput::finish() {
  writeIfFull();
  bool const paged = pager_.has_value();
  direct_ = false;
  if (paged) {
    finishPager();
  } else {
    writeTo(STDOUT_FILENO);
  }
}

void PagedOutput::startPager() {
  std::string const command = noPager_ ? "" : Pager::chosen();
  if (command.empty()) {
    direct_ = true;
  } else {
    pager_.emplace(command);
  }
}

void PagedOutput::finishPager() {
  noPager_ = !pager_->finish();
  pager_.reset();
  if (noPager_) {
    std::cerr << "qorcli: cannot run the pager \"" << Pager::chosen()
              << "\"; output is no longer paged" << std::endl;
  }
}

void PagedOutput::writeToPager() {
  try {
    writeTo(pager_->input());
  } catch (OutputClosed const&) {
    throw Interrupted();
  }
}

}  // namespace QorCliEngine
