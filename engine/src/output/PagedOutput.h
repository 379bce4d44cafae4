#ifndef QOR_CLI_ENGINE_PAGED_OUTPUT_H
#define QOR_CLI_ENGINE_PAGED_OUTPUT_H

#include <optional>

#include "output/OutputWriter.h"
#include "output/Pager.h"

namespace QorCliEngine {

// Output to a terminal: what is longer than the terminal is high goes through
// the operator's pager. Output that comes bit by bit does not, for it is to be
// seen as it comes.
//
// Where the pager cannot be run, what it was to show is written as it is.
//
// Throws Interrupted when the operator leaves the pager before the end.
class PagedOutput : public OutputWriter {
 public:
  using OutputWriter::OutputWriter;

  void writeIfFull() override;
  void flush() override;
  // Waits until the operator leaves the pager, if one was needed.
  void finish() override;
  void drop() override;

 private:
  void startPager();
  bool finishPager();
  void writeToPager();
  void giveUpPaging(std::string const& reason);

  std::optional<Pager> pager_;
  std::string unread_;     // written to the pager, which may not have begun
  bool begun_ = false;     // the pager has read something
  std::string complaint_;  // to be shown after the output
  bool direct_ = false;    // this command's output is not paged
  bool noPager_ = false;   // the pager cannot be run
};

}  // namespace QorCliEngine

#endif
