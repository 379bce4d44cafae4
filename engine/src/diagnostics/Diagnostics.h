#ifndef QOR_CLI_ENGINE_DIAGNOSTICS_H
#define QOR_CLI_ENGINE_DIAGNOSTICS_H

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/StageFigures.h"
#include "diagnostics/TraceCapture.h"

namespace QorCliEngine {

// What the engine shows, on standard error, of how it runs a line: the walk
// through the command trees, and figures of each stage. Costs nothing when
// neither is asked for. One thread.
class Diagnostics {
 public:
  // With `trace`, to be created before the plug-ins are loaded; throws then
  // what TraceCapture does.
  Diagnostics(bool trace, bool timing);

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

  // Forgets what has been traced since it was last shown.
  void dropTrace();

  // Shows what has been traced since it was last shown. Plug-ins are not to be
  // in the middle of a call.
  void showTrace();

  // Begins with the line's source, which stages follow one by one.
  void beginStages(std::string const& source);

  // Return where the figures of the source and of a new stage go; null when
  // none are wanted. Valid until the line ends, or is begun again.
  StageFigures* sourceFigures();
  StageFigures* addStage(std::string const& text);

 private:
  void endLine();

  std::optional<TraceCapture> trace_;
  bool timing_;
  std::deque<StageFigures> stages_;
};

}  // namespace QorCliEngine

#endif
