#ifndef QOR_CLI_CONTEXT_RULES_H
#define QOR_CLI_CONTEXT_RULES_H

#include <string>
#include <string_view>
#include <vector>

#include "FilterMap.h"
#include "LineFilter.h"

namespace QorCliPipe {

// Decides which lines of a text are kept: the selected ones and context lines
// around them, with separators between groups.
//
// A push takes time linear in its lines; unselected lines that cannot become
// context are not visited. Kept lines and the separator "   --\n" are appended
// to the sink, one string each. The caller owns the state, so that a text may
// come in several chunks. Throws std::bad_alloc if memory runs out; sink and
// state stay usable. Used, with both, by one thread at a time.
class ContextRules : public QorCliMatching::LineSink {
 public:
  // `after` and `before`: the number of context lines to keep after and before
  // a selected line, at least 0. `state` and `sink` are not owned and must
  // outlive the rules.
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
