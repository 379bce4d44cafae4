#ifndef QOR_CLI_ENGINE_FILE_SOURCE_H
#define QOR_CLI_ENGINE_FILE_SOURCE_H

#include <optional>
#include <string>

#include "sources/DescriptorReader.h"
#include "sources/Source.h"
#include "system/FileDescriptor.h"

namespace QorCliEngine {

// The contents of a file, which is opened when the source is started.
class FileSource : public Source {
 public:
  explicit FileSource(std::string path);

  void start() override;
  State read(LineChunker& chunker) override;
  void wait(int milliseconds) override;

 private:
  std::string path_;
  FileDescriptor file_;
  std::optional<DescriptorReader> reader_;
};

}  // namespace QorCliEngine

#endif
