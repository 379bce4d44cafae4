#include "CountCommand.h"

#include <algorithm>
#include <string>

#include "SharedSyntax.h"

namespace QorCliText {
namespace {

using QorCliUtilities::Arguments;
using QorCliUtilities::Printer;

// Counts matching lines.
class Counter : public QorCliMatching::LineSink {
 public:
  explicit Counter(std::uint64_t& count) : count_(count) {}

  void selected(std::string_view lines) override {
    auto const feeds = std::count(lines.begin(), lines.end(), '\n');
    count_ += static_cast<std::uint64_t>(feeds);
  }
  void unselected(std::string_view) override {}

 private:
  std::uint64_t& count_;
};

}  // namespace

QorCliUtilities::CommandSyntax CountCommand::syntax() {
  return {"count",
          "Count the lines, or those that match a pattern",
          {ignoreOption()},
          {patternArgument().optional()}};
}

CountCommand::CountCommand(Arguments const& typed) {
  if (typed.has(kPattern)) {
    filter_.emplace(typed.text(kPattern), typed.has("-i"));
  }
}

void CountCommand::text(std::string_view lines, Printer&) {
  Counter counter(count_);
  filter_ ? filter_->filter(lines, false, counter) : counter.selected(lines);
}

void CountCommand::end(Printer& printer) {
  printer.line(std::to_string(count_));
}

}  // namespace QorCliText
