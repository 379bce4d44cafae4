#ifndef QOR_UNIT_CHILD_PROCESS_H
#define QOR_UNIT_CHILD_PROCESS_H

#include <map>
#include <string>

namespace QorUnit {

// What a child process left.
struct ChildResult {
  int exitStatus;  // -1 when it did not exit by itself
  std::string out;
  std::string err;
};

// Runs `program` with one argument and no environment but `environment`, and
// waits for it.
ChildResult runChild(std::string const& program, std::string const& argument,
                     std::map<std::string, std::string> const& environment);

// A file that does not exist yet and is removed at the end.
class TemporaryFile {
 public:
  TemporaryFile();
  ~TemporaryFile();
  TemporaryFile(TemporaryFile const&) = delete;
  TemporaryFile& operator=(TemporaryFile const&) = delete;

  std::string path() const { return folder_ + "/file"; }
  // The file's bytes from `offset` on; empty when there is no file.
  std::string read(std::size_t offset = 0) const;

 private:
  std::string folder_;
};

}  // namespace QorUnit

#endif
