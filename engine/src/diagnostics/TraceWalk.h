#ifndef QOR_CLI_ENGINE_TRACE_WALK_H
#define QOR_CLI_ENGINE_TRACE_WALK_H

#include <string>

namespace QorCliEngine {

// Makes trace records readable: each line is indented by how many functions
// have been entered and not left.
//
//   >> tokenize
//     >> validateToken << true
//     a progress message
//   << tokenize true
//
// `records`: lines as the runtime library writes them,
//
//   <severity|level> <value> <subsystem> <file>:<line> <function>: <text>
//
// in which level 9 is an entry and level 10 an exit. A function that says
// nothing on its way is shown in one line, without what it called. An exit
// closes all that has been entered since its own entry: an exception may have
// passed through it. An exit that was never entered closes nothing. A line that
// is no record is shown as it is.
std::string traceWalk(std::string const& records);

}  // namespace QorCliEngine

#endif
