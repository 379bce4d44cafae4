#ifndef QOR_CLI_ENGINE_STAGE_FIGURES_H
#define QOR_CLI_ENGINE_STAGE_FIGURES_H

#include <chrono>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace QorCliEngine {

// How much text there was.
struct TextFigures {
  std::uint64_t lines = 0;  // line feeds
  std::uint64_t bytes = 0;

  void add(std::string_view text);
};

// What went through one stage of a command line.
struct StageFigures {
  std::string text;  // the stage
  TextFigures in;    // stays empty for a source
  TextFigures out;
  std::chrono::nanoseconds time{};
};

// Adds the time from its construction to its destruction to a stage's; reads no
// clock when there are no figures. One thread.
class StageClock {
 public:
  // `figures` is not owned, may be null, and must outlive the clock.
  explicit StageClock(StageFigures* figures);
  ~StageClock();
  StageClock(StageClock const&) = delete;
  StageClock& operator=(StageClock const&) = delete;

 private:
  StageFigures* figures_;
  std::chrono::steady_clock::time_point begin_;
};

// The figures as a table: a heading, then a row for each stage, of which the
// first is the source and has nothing before it. Times are in milliseconds.
std::string figuresTable(std::deque<StageFigures> const& stages);

}  // namespace QorCliEngine

#endif
