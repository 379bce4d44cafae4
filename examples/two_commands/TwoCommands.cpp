#include <CommandComponent.h>

using namespace QorCliUtilities;

namespace {

// Omits lines equal to the previous one.
class Unique : public LineProcessor {
 public:
  static CommandSyntax syntax() {
    return {"unique",
            "Print repeated lines once",
            {{"-c", "--count", "Print how often each line stood"}}};
  }

  explicit Unique(Arguments const& typed) : count_(typed.has("--count")) {}

  void line(std::string_view text, Printer& printer) override {
    if (times_ != 0 && text != last_) end(printer);
    if (times_++ == 0) last_ = text;
  }

  void end(Printer& printer) override {
    if (times_ == 0) return;
    printer.line(count_ ? std::to_string(times_) + ' ' + last_ : last_);
    times_ = 0;
  }

 private:
  bool count_;
  std::string last_;
  std::size_t times_ = 0;  // repetitions of the last line
};

// Prints the first lines.
class Head : public LineProcessor {
 public:
  static CommandSyntax syntax() {
    return {"head",
            "Print the first lines",
            {},
            {Parameter::number("<n>", "How many lines; 10 by default", 1, 5000)
                 .optional()}};
  }

  explicit Head(Arguments const& typed) : left_(typed.number("<n>", 10)) {}

  void line(std::string_view text, Printer& printer) override {
    if (left_ == 0) return;
    --left_;
    printer.line(text);
  }

 private:
  unsigned left_;
};

struct TwoCommands : CommandComponent<TwoCommands, Unique, Head> {
  static constexpr char kName[] = "TwoCommands";
};

}  // namespace

QOR_CLI_ENTRY_POINTS(TwoCommands)
