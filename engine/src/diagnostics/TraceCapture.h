#ifndef QOR_CLI_ENGINE_TRACE_CAPTURE_H
#define QOR_CLI_ENGINE_TRACE_CAPTURE_H

#include <string>

#include "system/FileDescriptor.h"

namespace QorCliEngine {

// Has the framework's runtime library write its log and trace records where the
// engine can read them: a file in memory, which never fills up as a pipe does
// while nobody reads it. One in a process, one thread.
class TraceCapture {
 public:
  // To be created before anything asks for the logging facade, which reads the
  // environment once. The environment is afterwards as it was. Throws
  // std::runtime_error when the runtime library cannot be made to trace.
  TraceCapture();

  // The records since the last call, each with its line feed.
  std::string take();

 private:
  FileDescriptor file_;
};

}  // namespace QorCliEngine

#endif
