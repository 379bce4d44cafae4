#ifndef QOR_CLI_ENGINE_DIAGNOSTICS_H
#define QOR_CLI_ENGINE_DIAGNOSTICS_H

#include <cstddef>
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

  // Begins a call of a component, whose records tell why it fails.
  void beginCall();

  // Keeps the reason that has been logged since the call began, if one was; it
  // is then shown in the trace only.
  void noteFailure();

  // As showRecords(), and returns the reason that was kept.
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
  std::size_t callBegin_ = 0;  // in the records since they were last shown
  std::string kept_;           // records from before the failure was noted
  std::optional<FailureReason> reason_;
  std::deque<StageFigures> stages_;
};

}  // namespace QorCliEngine

#endif
