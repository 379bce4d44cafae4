#include <CommandComponent.h>
#include <LineFilter.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <stdexcept>

using namespace QorCliUtilities;

namespace {

// Prints the number of lines, or of those that match a pattern.
class Count : public TextProcessor, private QorCliMatching::LineSink {
 public:
  static CommandSyntax syntax() {
    return {"count",
            "Count lines",
            {{"-i", "--ignore", "Ignore the case of letters"},
             {"-m", "--max", "Stop counting at a number",
              Parameter::number("<max>", "The highest count", 1, 1000000)}},
            {Parameter::text("<pattern>", "What lines match").optional()}};
  }

  explicit Count(Arguments const& typed) {
    if (typed.has("--max")) max_ = typed.number("--max");
    if (typed.has("<pattern>")) {
      filter_.emplace(typed.text("<pattern>"), typed.has("--ignore"));
    } else if (typed.has("--ignore")) {
      throw std::invalid_argument("Option '--ignore' needs a <pattern>");
    }
  }

  void text(std::string_view lines, Printer&) override {
    filter_ ? filter_->filter(lines, false, *this) : selected(lines);
  }

  void end(Printer& printer) override {
    printer.line(std::to_string(std::min(lines_, max_)));
  }

 private:
  void selected(std::string_view lines) override {
    lines_ +=
        static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n'));
  }
  void unselected(std::string_view) override {}

  std::size_t max_ = SIZE_MAX;
  std::size_t lines_ = 0;
  std::optional<QorCliMatching::LineFilter> filter_;
};

struct CountComp : CommandComponent<CountComp, Count> {
  static constexpr char kName[] = "CountComp";
};

}  // namespace

QOR_CLI_ENTRY_POINTS(CountComp)
