#ifndef QOR_CLI_ENGINE_PAGER_H
#define QOR_CLI_ENGINE_PAGER_H

#include <cstddef>
#include <optional>
#include <string>

#include "system/ChildProcess.h"
#include "system/FileDescriptor.h"

namespace QorCliEngine {

// The operator's pager, running.
class Pager {
 public:
  // The command of the pager that the operator wishes: that of the environment
  // variable PAGER, or less when that is not set and there is a less. Empty
  // when there is to be none.
  static std::string chosen();

  // Starts `command`, a shell's command. Throws SourceFailure.
  explicit Pager(std::string const& command);

  // What is to be shown is written here.
  int input() const { return input_.get(); }

  // How many bytes can be written before the pager reads the first.
  std::size_t capacity() const;

  // Ends the text and waits until the operator leaves the pager, or the engine
  // is to leave. Returns false when the pager could not be run at all.
  bool finish();

 private:
  std::optional<ChildProcess> process_;
  FileDescriptor input_;  // closed first: then the pager ends
};

}  // namespace QorCliEngine

#endif
