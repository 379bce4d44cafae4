#ifndef QOR_CLI_FILTER_MAP_H
#define QOR_CLI_FILTER_MAP_H

#include <map>

#include "PrecedingLines.h"

namespace QorCliPipe {
namespace PipeCmd {

// What the filter carries from one line to the next, and from one call to the
// next while the input of an action is delivered.
struct FilterStruct {
  // Lines of trailing context still to be printed.
  int trailingLinesLeft = 0;
  // The matching lines of the current run while trailing context is asked for;
  // 0: no run is in progress.
  unsigned runCounter = 0;
  // A group separator is owed before the next group that is printed.
  bool separatorPending = false;
  // Lines were dropped from precedingLines since the last printed group, so the
  // next group is not adjacent to it.
  bool linesSkipped = false;
  // The most recent lines that were not printed, kept as leading context.
  PrecedingLines precedingLines;
};

// The filter's state by action id. Entries are made by the first line of an
// action; all are dropped when any input is complete and when any filter fails.
// Not locked: the engine calls the component one call at a time.
extern std::map<unsigned, FilterStruct> FilterMap;

}  // namespace PipeCmd
}  // namespace QorCliPipe

#endif
