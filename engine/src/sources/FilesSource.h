#ifndef QOR_CLI_ENGINE_FILES_SOURCE_H
#define QOR_CLI_ENGINE_FILES_SOURCE_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "sources/FileSource.h"
#include "sources/Source.h"

namespace QorCliEngine {

// The contents of the files that match a pattern, one after the other, sorted
// by path. Folders that match are passed over. A last line without a line feed
// is a line of its own.
//
// A file that cannot be read does not keep the others from being read; it is a
// failure at the end.
class FilesSource : public Source {
 public:
  // `pattern`: a path with *, ? and [...] as in a shell. Files are looked for
  // when the source is started, which fails when there is none.
  explicit FilesSource(std::string pattern);

  void start() override;
  State read(LineChunker& chunker) override;
  void wait(int milliseconds) override;
  void finish() override;

 private:
  bool openNext();
  void note(std::string const& failure);

  std::string pattern_;
  std::vector<std::string> paths_;
  std::size_t next_ = 0;            // to be opened, of paths_
  std::optional<FileSource> file_;  // being read
  std::string firstFailure_;
  std::size_t failures_ = 0;
};

}  // namespace QorCliEngine

#endif
