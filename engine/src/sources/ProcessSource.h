#ifndef QOR_CLI_ENGINE_PROCESS_SOURCE_H
#define QOR_CLI_ENGINE_PROCESS_SOURCE_H

#include <optional>
#include <string>
#include <vector>

#include "sources/DescriptorReader.h"
#include "sources/Source.h"
#include "system/ChildProcess.h"
#include "system/FileDescriptor.h"

namespace QorCliEngine {

// The standard output of a program, which is started with the source and has
// no standard input. Ending with anything but exit status 0 is a failure.
//
// What the program says on standard error goes to the engine's; at a terminal,
// control characters in it are made visible.
class ProcessSource : public Source {
 public:
  // `words`: the program and its arguments, at least one.
  explicit ProcessSource(std::vector<std::string> words);

  void start() override;
  State read(LineChunker& chunker) override;
  void wait(int milliseconds) override;
  void finish() override;

 private:
  void showErrors();

  std::vector<std::string> words_;
  // In this order: the pipe is closed after the program has ended.
  FileDescriptor output_;
  FileDescriptor errors_;  // none where they need no look
  std::optional<DescriptorReader> reader_;
  std::optional<ChildProcess> process_;
};

}  // namespace QorCliEngine

#endif
