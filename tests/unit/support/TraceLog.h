#ifndef QOR_UNIT_TRACE_LOG_H
#define QOR_UNIT_TRACE_LOG_H

#include <string>
#include <vector>

#include "ChildProcess.h"

namespace QorUnit {

// One line of the trace.
struct TraceRecord {
  std::string kind;
  unsigned value = 0;
  std::string subsystem;
  std::string file;
  unsigned line = 0;
  std::string function;
  std::string text;
};

// The trace of this process, which must be the first to speak of it: the
// logging facade reads its environment once.
class TraceLog {
 public:
  TraceLog();

  // The records written since the last call.
  std::vector<TraceRecord> take();

  // The same in short: an entry or exit as "<function> >> " or
  // "<function> << <result>", a progress message as its text alone.
  std::vector<std::string> takeShort();

 private:
  TemporaryFile file_;
  std::size_t taken_ = 0;
};

}  // namespace QorUnit

#endif
