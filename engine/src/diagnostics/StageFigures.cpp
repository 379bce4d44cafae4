#include "diagnostics/StageFigures.h"

#include <Poco/NumberFormatter.h>

#include <algorithm>

namespace QorCliEngine {
namespace {

constexpr int kTimeDecimals = 3;  // of a millisecond
// Wide enough for what is usual, so that tables of several lines are alike.
constexpr std::size_t kNumberWidth = 9;
constexpr char kNone[] = "-";

std::string column(std::string const& text) {
  std::size_t const width = std::max(text.size(), kNumberWidth);
  return std::string(width - text.size(), ' ') + text + "  ";
}

std::string milliseconds(std::chrono::nanoseconds time) {
  std::chrono::duration<double, std::milli> const value = time;
  return Poco::NumberFormatter::format(value.count(), kTimeDecimals);
}

std::string row(StageFigures const& stage, bool isSource) {
  auto const number = [](std::uint64_t value) {
    return column(std::to_string(value));
  };
  return (isSource ? column(kNone) : number(stage.in.lines)) +
         number(stage.out.lines) +
         (isSource ? column(kNone) : number(stage.in.bytes)) +
         number(stage.out.bytes) + column(milliseconds(stage.time)) +
         stage.text + '\n';
}

}  // namespace

void TextFigures::add(std::string_view text) {
  lines +=
      static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
  bytes += text.size();
}

StageClock::StageClock(StageFigures* figures) : figures_(figures) {
  if (figures_ != nullptr) begin_ = std::chrono::steady_clock::now();
}

StageClock::~StageClock() {
  if (figures_ == nullptr) return;
  figures_->time += std::chrono::steady_clock::now() - begin_;
}

std::string figuresTable(std::deque<StageFigures> const& stages) {
  std::string table = column("lines in") + column("lines out") +
                      column("bytes in") + column("bytes out") +
                      column("time/ms") + "stage\n";
  for (StageFigures const& stage : stages) {
    table += row(stage, &stage == &stages.front());
  }
  return table;
}

}  // namespace QorCliEngine
