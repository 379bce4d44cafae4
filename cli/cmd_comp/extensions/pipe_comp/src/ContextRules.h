#ifndef QOR_CLI_CONTEXT_RULES_H
#define QOR_CLI_CONTEXT_RULES_H

#include <string>
#include <string_view>
#include <vector>

#include "FilterMap.h"
#include "LineFilter.h"

namespace QorCliPipe {

// Which lines of a text are kept, given which of them are selected: those,
// lines of context around them, and separators between groups.
//
// A push takes time proportional to its lines, and unselected lines that are of
// no use as context are not looked at one by one. Kept lines are appended to
// the sink, one string each, and so is the separator "   --\n". The state lives
// outside, so that a text may come in several chunks. When memory runs out,
// std::bad_alloc is thrown; sink and state stay usable. Used by one thread at a
// time, as are the state and the sink.
class ContextRules : public QorCliMatching::LineSink {
 public:
  // `after` and `before` are the numbers of lines of context to keep behind and
  // in front of a selected line, from 0 (none) up. `state` and `sink` are not
  // owned and must outlive the rules.
  ContextRules(int after, int before, PipeCmd::FilterStruct& state,
               std::vector<std::string>& sink);

  void selected(std::string_view lines) override;
  void unselected(std::string_view lines) override;

 private:
  void selectedLine(std::string_view line);
  void unselectedLineInRun(std::string_view line);
  void keepForLater(std::string_view lines);
  void separate();

  int after_;
  int before_;
  PipeCmd::FilterStruct& state_;
  std::vector<std::string>& sink_;
};

}  // namespace QorCliPipe

#endif
