#ifndef QOR_CLI_ENGINE_DIAGNOSTICS_H
#define QOR_CLI_ENGINE_DIAGNOSTICS_H

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/FailureReason.h"
#include "diagnostics/LogCapture.h"
#include "diagnostics/StageFigures.h"

namespace QorCliEngine {

// What the engine shows, on standard error, of how it runs a line: the walk
// through the command trees, and figures of each stage, which cost nothing when
// they are not asked for; and errors that are logged, unless they tell why a
// line failed. One thread.
class Diagnostics {
 public:
  // To be created before the plug-ins are loaded. Throws what LogCapture does.
  Diagnostics(bool trace, bool timing);

  // Shows errors that are still to be shown.
  ~Diagnostics();
  Diagnostics(Diagnostics const&) = delete;
  Diagnostics& operator=(Diagnostics const&) = delete;

  // One line, from the first look at its text to its end, at which the rest of
  // the trace and the figures are shown.
  class Line {
   public:
    explicit Line(Diagnostics& diagnostics);
    ~Line();
    Line(Line const&) = delete;
    Line& operator=(Line const&) = delete;

   private:
    Diagnostics& diagnostics_;
  };

  // Forget the records since they were last shown: all, or in a trace.
  void dropRecords();
  void dropTrace();

  // Shows the records since they were last shown. Plug-ins are not to be in the
  // middle of a call.
  void showRecords();

  // As showRecords(), after a failure: returns the reason that was logged for
  // it, if one was, and shows that in the trace only.
  std::optional<FailureReason> takeReason();

  // Begins with the line's source, which stages follow one by one.
  void beginStages(std::string const& source);

  // Return where the figures of the source and of a new stage go; null when
  // none are wanted. Valid until the line ends, or is begun again.
  StageFigures* sourceFigures();
  StageFigures* addStage(std::string const& text);

 private:
  void endLine();

  void show(std::string const& records) const;

  bool trace_;
  bool timing_;
  LogCapture records_;
  std::deque<StageFigures> stages_;
};

}  // namespace QorCliEngine

#endif
