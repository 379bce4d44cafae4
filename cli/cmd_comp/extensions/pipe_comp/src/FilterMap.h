#ifndef QOR_CLI_FILTER_MAP_H
#define QOR_CLI_FILTER_MAP_H

#include <map>

#include "PrecedingLines.h"

namespace QorCliPipe {
namespace PipeCmd {

// The state of the filter between lines, and between the chunks of an action's
// input.
struct FilterStruct {
  // Lines of trailing context still to be printed.
  int trailingLinesLeft = 0;
  // With trailing context, the number of matching lines in the current run; 0
  // outside a run.
  unsigned runCounter = 0;
  // The next group is preceded by a separator.
  bool separatorPending = false;
  // Lines were dropped from precedingLines since the last group, so the next
  // one is not adjacent to it.
  bool linesSkipped = false;
  // The most recent unprinted lines, for leading context.
  PrecedingLines precedingLines;
};

// The filter's state by action id. The first line of an action creates its
// entry; all entries are dropped when any input is complete or any filter
// fails. Not locked: the engine makes one call at a time.
extern std::map<unsigned, FilterStruct> FilterMap;

}  // namespace PipeCmd
}  // namespace QorCliPipe

#endif
