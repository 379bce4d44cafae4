#ifndef QOR_CLI_LINE_FILTER_H
#define QOR_CLI_LINE_FILTER_H

#include <memory>
#include <string>
#include <string_view>

#include "PatternError.h"

namespace QorCliMatching {

// Receives the lines of a text in order, one or more at a time, each with its
// line feed. Called on the filtering thread, on the filter's own stack. It may
// throw, and filter() passes the exception on; it must not leave by longjmp()
// or by switching to another coroutine.
class LineSink {
 public:
  // `lines`: whole lines, at least one; valid only during the call.
  virtual void selected(std::string_view lines) = 0;
  virtual void unselected(std::string_view lines) = 0;

 protected:
  ~LineSink() = default;
};

// Splits the lines of a text into those that match a Perl-compatible regular
// expression and those that do not.
//
// A line matches when the first match in it is not empty, as PCRE2's
// interpreter finds it. Time is bounded for any pattern and any line: a call
// over 128 KiB returns within two seconds, with an error if a line is undecided
// by then. Regular patterns take time linear in the text, except those that may
// match the empty string, some with non-ASCII bytes, and very large ones on
// long lines.
//
// Runs on a stack of its own (OwnStack.h), so 16 KiB of the caller's are
// enough. A compiled pattern filters any number of texts. Once a call has
// thrown, the filter may only be destroyed. One call at a time across all
// filters of a library.
class LineFilter {
 public:
  // For tests and benchmarks; everybody else uses the defaults.
  struct Settings {
    bool skips = true;     // skip lines that lack a required literal
    double seconds = 1.0;  // processor time for all lines of a call
  };

  // Compiles `pattern`. Throws PatternError when it is malformed, longer than
  // 64 KiB, or ignores case in UTF-8 and has more than 64 hyphens;
  // std::bad_alloc.
  LineFilter(std::string const& pattern, bool ignoreCase);
  LineFilter(std::string const& pattern, bool ignoreCase,
             Settings const& settings);
  ~LineFilter();

  // Whether this filter was compiled from this pattern and option.
  bool isFor(std::string const& pattern, bool ignoreCase) const;

  // Pushes the lines of `text` into `sink`: matching lines as selected and the
  // others as unselected or, with `invert`, the other way round. Ignores text
  // after the last line feed. Throws PatternError when a line cannot be
  // decided; the lines before it have been pushed by then.
  void filter(std::string_view text, bool invert, LineSink& sink);

 private:
  class Worker;
  std::unique_ptr<Worker> worker_;
};

}  // namespace QorCliMatching

#endif
