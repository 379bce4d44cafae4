#ifndef QOR_CLI_ENGINE_LOG_CAPTURE_H
#define QOR_CLI_ENGINE_LOG_CAPTURE_H

#include <sys/types.h>

#include <string>

#include "system/FileDescriptor.h"

namespace QorCliEngine {

// Reads the log and trace records that the framework's runtime library writes.
//
// Where they would go to standard error, they go to a file in memory instead,
// which never fills up as a pipe does while nobody reads it; whoever has the
// capture shows them. Where QOR_LOG_FILE names a file, they go there and are
// read again, with what others write there. Traces that QOR_LOG_LEVEL asks for
// are left alone. One in a process, one thread.
class LogCapture {
 public:
  enum class Kind { kErrors, kTrace };

  // To be created before anything asks for the logging facade, which reads the
  // environment once. The environment is afterwards as it was. kTrace asks for
  // all records, in memory, and throws std::runtime_error when the runtime
  // library cannot be made to trace.
  explicit LogCapture(Kind kind);

  // Whether records are seen nowhere unless they are shown.
  bool isOnly() const { return inMemory_; }

  // The records since the last call of either, each with its line feed.
  std::string take();
  void drop();

 private:
  void captureInMemory(char const* level);
  void readAgain(char const* path);
  off_t end() const;

  FileDescriptor file_;
  bool inMemory_ = false;
  off_t begin_ = 0;  // of what has not been taken
};

}  // namespace QorCliEngine

#endif
