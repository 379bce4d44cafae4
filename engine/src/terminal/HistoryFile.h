#ifndef QOR_CLI_ENGINE_HISTORY_FILE_H
#define QOR_CLI_ENGINE_HISTORY_FILE_H

#include <histedit.h>

#include <string>

#include "system/FileDescriptor.h"

namespace QorCliEngine {

// The file in which command lines are kept between sessions, of which several
// may write at once: $XDG_STATE_HOME/qorcli/history, or below ~/.local/state.
//
// Only a regular file of the user's own is read and written: nothing beyond a
// symbolic link, no FIFO, and no file that begins otherwise than a history. The
// folder and the file are made accessible to the user only. Where there is no
// such file, and none can be made, nothing is read or kept; that is no error.
// If its lock is unavailable for 0.2 seconds, the file is used without.
// One thread.
class HistoryFile {
 public:
  HistoryFile();

  // Appends the lines in the file to `history`. A file that has grown to more
  // than twice `mostLines` is cut down to what `history` then holds.
  void load(::History* history, int mostLines);

  // Adds a line at the end: it is there for all sessions that begin later.
  void append(std::string const& line);

 private:
  FileDescriptor open() const;
  bool replace(::History* history) const;

  FileDescriptor folder_;  // also the lock; none when nothing is kept
};

}  // namespace QorCliEngine

#endif
