#include "LineFilter.h"

#include <cstddef>

#include "LineMatcher.h"
#include "OwnStack.h"
#include "TextSearch.h"

namespace QorCliMatching {
namespace {

// Candidate lines after which the prefilter is judged: does it skip more than
// it finds?
constexpr std::size_t kLinesOnTrial = 64;

struct Trial {
  std::size_t begin = 0;    // offset in the text
  std::size_t lines = 0;    // that contain a required literal
  std::size_t skipped = 0;  // bytes
};

}  // namespace

class LineFilter::Worker {
 public:
  Worker(std::string const& pattern, bool ignoreCase, Settings const& settings)
      : matcher_(pattern, ignoreCase, settings.seconds),
        sufficient_(settings.skips && matcher_.facts().sufficient),
        search_(settings.skips ? matcher_.facts().anyOf
                               : std::vector<std::string>{},
                matcher_.facts().ignoreCase) {}

  bool isFor(std::string const& pattern, bool ignoreCase) const {
    return matcher_.isFor(pattern, ignoreCase);
  }

  void filter(std::string_view text, bool invert, LineSink& sink);

 private:
  std::size_t nextCandidate(std::size_t from);
  void judgeSkipping(std::size_t from, std::size_t line);

  LineMatcher matcher_;
  bool sufficient_;
  AnyTextSearch search_;
  // State of the current call.
  std::string_view text_;
  bool skips_ = false;
  std::size_t matchEnd_ = 0;  // if within the candidate line, it matches
  Trial trial_;
};

// The start of the next line, at or after `from`, that may match.
std::size_t LineFilter::Worker::nextCandidate(std::size_t from) {
  matchEnd_ = sufficient_ ? 0 : text_.size();
  if (!skips_ && !matcher_.canFind()) return from;
  std::size_t place = 0;
  if (skips_) {
    place = search_.find(from);
  } else {
    LineMatcher::Span const match = matcher_.find(text_, from);
    place = match.begin;
    matchEnd_ = match.end;
  }
  if (place == std::string_view::npos) return text_.size();
  std::size_t const line = from + beginOfLine(text_.substr(from), place - from);
  if (skips_ && !sufficient_) judgeSkipping(from, line);
  return line;
}

// The prefilter is off for the rest of the call once lines with a required
// literal make up more of the text than the lines between them.
void LineFilter::Worker::judgeSkipping(std::size_t from, std::size_t line) {
  trial_.skipped += line - from;
  if (++trial_.lines < kLinesOnTrial) return;
  skips_ = trial_.skipped > (line - trial_.begin) / 2;
  trial_ = {line, 0, 0};
}

// Runs of lines that do not match are pushed as one, so that the sink copies
// only the last few.
void LineFilter::Worker::filter(std::string_view text, bool invert,
                                LineSink& sink) {
  text_ = text.substr(0, text.rfind('\n') + 1);
  matcher_.beginCall();
  search_.reset(text_);
  skips_ = !search_.empty();
  trial_ = {};
  std::size_t pushed = 0;  // lines before this offset are done
  auto const push = [&](std::size_t end, bool matched) {
    std::string_view const lines = text_.substr(pushed, end - pushed);
    pushed = end;
    if (lines.empty()) return;
    matched != invert ? sink.selected(lines) : sink.unselected(lines);
  };
  std::size_t line = nextCandidate(0);
  try {
    while (line < text_.size()) {
      std::size_t const next = text_.find('\n', line) + 1;
      if (matchEnd_ < next ||
          matcher_.matches(text_.substr(line, next - 1 - line))) {
        push(line, false);
        push(next, true);
      }
      line = nextCandidate(next);
    }
  } catch (PatternError const&) {
    push(line, false);
    throw;
  }
  push(text_.size(), false);
}

LineFilter::LineFilter(std::string const& pattern, bool ignoreCase)
    : LineFilter(pattern, ignoreCase, Settings()) {}

LineFilter::LineFilter(std::string const& pattern, bool ignoreCase,
                       Settings const& settings) {
  onOwnStack([&] {
    worker_ = std::make_unique<Worker>(pattern, ignoreCase, settings);
  });
}

LineFilter::~LineFilter() = default;

bool LineFilter::isFor(std::string const& pattern, bool ignoreCase) const {
  return worker_->isFor(pattern, ignoreCase);
}

void LineFilter::filter(std::string_view text, bool invert, LineSink& sink) {
  onOwnStack([&] { worker_->filter(text, invert, sink); });
}

}  // namespace QorCliMatching
