#ifndef QOR_CLI_ENGINE_LOG_CAPTURE_H
#define QOR_CLI_ENGINE_LOG_CAPTURE_H

#include <sys/types.h>

#include <cstddef>
#include <string>

#include "system/FileDescriptor.h"

namespace QorCliEngine {

// Reads the log and trace records that the framework's runtime library writes.
//
// Where they would go to standard error, they go to a file in memory instead,
// which never fills up as a pipe does while nobody reads it; whoever has the
// capture shows them. Left alone are a file that QOR_LOG_FILE names, which
// other processes may write, too, and traces that QOR_LOG_LEVEL asks for:
// nothing is captured then. One in a process, one thread.
class LogCapture {
 public:
  enum class Kind { kErrors, kTrace };

  // To be created before anything asks for the logging facade, which reads the
  // environment once. The environment is afterwards as it was. kTrace asks for
  // all records, in memory, and throws std::runtime_error when the runtime
  // library cannot be made to trace.
  explicit LogCapture(Kind kind);

  // The size, in bytes, of the records that take() would return.
  std::size_t size() const;

  // The records since the last call of either, each with its line feed.
  std::string take();
  void drop();

 private:
  void captureInMemory(char const* level);
  off_t end() const;

  FileDescriptor file_;
  off_t begin_ = 0;  // of what has not been taken
};

}  // namespace QorCliEngine

#endif
