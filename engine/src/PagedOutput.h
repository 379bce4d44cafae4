#ifndef QOR_CLI_ENGINE_PAGED_OUTPUT_H
#define QOR_CLI_ENGINE_PAGED_OUTPUT_H

#include <optional>

#include "OutputWriter.h"
#include "Pager.h"

namespace QorCliEngine {

// Output to a terminal: what is longer than the terminal is high goes through
// the operator's pager. Output that comes bit by bit does not, for it is to be
// seen as it comes.
//
// Throws Interrupted when the operator leaves the pager before the end.
class PagedOutput : public OutputWriter {
 public:
  void writeIfFull() override;
  void flush() override;
  // Waits until the operator leaves the pager, if one was needed.
  void finish() override;

 private:
  void startPager();
  void finishPager();
  void writeToPager();

  std::optional<Pager> pager_;
  bool direct_ = false;   // this command's output is not paged
  bool noPager_ = false;  // the pager cannot be run
};

}  // namespace QorCliEngine

#endif
