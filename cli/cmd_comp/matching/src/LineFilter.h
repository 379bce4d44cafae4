#ifndef QOR_CLI_LINE_FILTER_H
#define QOR_CLI_LINE_FILTER_H

#include <memory>
#include <string>
#include <string_view>

#include "PatternError.h"

namespace QorCliMatching {

// Receives the lines of a text in order, one or several at a time, each with
// its line feed. Called on the thread that filters, and on the filter's own
// stack: it may throw, which comes out of filter(), but not leave by longjmp()
// or by a switch to another coroutine.
class LineSink {
 public:
  // `lines`: whole lines, at least one; only valid during the call.
  virtual void selected(std::string_view lines) = 0;
  virtual void unselected(std::string_view lines) = 0;

 protected:
  ~LineSink() = default;
};

// Tells the lines of a text that match a Perl-compatible regular expression
// from those that do not.
//
// The answer is that of PCRE2's interpreter; a line matches when the first
// match in it is not empty. It takes bounded time whatever the pattern and the
// lines: a call over 128 KiB returns within two seconds. Where a line is not
// decided by then, the call ends with an error. Regular patterns are decided in
// time that grows with the text, but for those that may match the empty text,
// some with bytes beyond ASCII, and very large ones on long lines.
//
// Works on a stack of its own (OwnStack.h), so that any caller's will do, of 16
// KiB even. The compiled pattern serves any number of texts. When a call throws
// anything, the filter is only good to be destroyed. One call at a time, of all
// filters in a library.
class LineFilter {
 public:
  // For tests and measurements: what everybody else gets is the default.
  struct Settings {
    bool skips = true;     // lines that lack a required text are not matched
    double seconds = 1.0;  // of processor time, for a call's lines
  };

  // Compiles `pattern`. Throws PatternError when it is malformed, longer than
  // 64 KiB, or ignores case in UTF-8 and has more than 64 hyphens;
  // std::bad_alloc.
  LineFilter(std::string const& pattern, bool ignoreCase);
  LineFilter(std::string const& pattern, bool ignoreCase,
             Settings const& settings);
  ~LineFilter();

  // Whether this is the filter for that expression.
  bool isFor(std::string const& pattern, bool ignoreCase) const;

  // Pushes the lines of `text` into `sink`: those that match as selected and
  // the others as unselected or, with `invert`, the other way round. Text
  // behind the last line feed is no line. Throws PatternError when there is no
  // answer for a line; the lines before it have been pushed then.
  void filter(std::string_view text, bool invert, LineSink& sink);

 private:
  class Worker;
  std::unique_ptr<Worker> worker_;
};

}  // namespace QorCliMatching

#endif
