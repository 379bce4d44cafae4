#ifndef QOR_CLI_ENGINE_LIBRARY_COPY_H
#define QOR_CLI_ENGINE_LIBRARY_COPY_H

#include <string>

#include "system/FileDescriptor.h"

namespace QorCliEngine {

// A copy of a shared library's file in memory, which the loader takes for a
// library of its own: loaded from there, it shares no data with the first. It
// is gone with the object, unless the library stays loaded when it is closed;
// the system's folders are not written to. One thread.
class LibraryCopy {
 public:
  // Holds no copy.
  LibraryCopy() = default;

  // Copies the file that is open for reading as `library`. Throws
  // PluginFailure, also when what the library shares in a process cannot be
  // told because it has no table of sections.
  explicit LibraryCopy(FileDescriptor const& library);

  // The library has been closed as often as it was opened.
  ~LibraryCopy();
  LibraryCopy(LibraryCopy const&) = delete;
  LibraryCopy& operator=(LibraryCopy const&) = delete;

  explicit operator bool() const { return static_cast<bool>(file_); }

  // The copy's path for dlopen. The object must outlive the library that is
  // loaded from there.
  std::string path() const;

 private:
  // The loader knows a library by its path, which is this number's: if the
  // descriptor were closed, it would take the next copy for this one.
  FileDescriptor file_;
};

}  // namespace QorCliEngine

#endif
