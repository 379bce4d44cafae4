#ifndef QOR_CLI_LINE_PROCESSOR_H
#define QOR_CLI_LINE_PROCESSOR_H

#include <string>
#include <string_view>
#include <vector>

namespace QorCliUtilities {

// Where a pipe command prints. Valid during the call that it is handed to. What
// is printed in a call that throws is lost.
//
// What is printed is copied once, and a long line takes its length and no more.
// A NUL, at which the engine would take the text to end, is printed as a blank.
class Printer {
 public:
  // What is printed is appended to `texts`, which is not owned: to the last of
  // them, or as further ones.
  explicit Printer(std::vector<std::string>& texts) : texts_(texts) {}

  // Prints `line` and a line feed.
  void line(std::string_view line);

  // Prints `prefix` and, behind it in the same line, `line`.
  void line(std::string_view prefix, std::string_view line);

  // Prints whole lines, each with its line feed.
  void lines(std::string_view lines);

 private:
  std::string& room(std::size_t size);

  std::vector<std::string>& texts_;
};

// One run of a pipe command: an object that is made for an action when it
// begins, is given the text of the action, and is deleted when the text is
// complete, or when the action fails.
//
// Any function of it, the constructor included, may throw: the operator is then
// shown "ERROR: " and the reason (PipeText.h), and the action has failed. One
// call at a time.
class TextProcessor {
 public:
  virtual ~TextProcessor() = default;

  // The next chunk of the text: one line or several, each with its line feed.
  // `lines` is valid during the call only.
  virtual void text(std::string_view lines, Printer& printer) = 0;

  // The text is complete. Prints nothing, unless overridden.
  virtual void end(Printer& printer);
};

// A TextProcessor that works line by line.
class LineProcessor : public TextProcessor {
 public:
  // The next line, without its line feed, valid during the call only.
  virtual void line(std::string_view text, Printer& printer) = 0;

  void text(std::string_view lines, Printer& printer) final;
};

// Cuts a text that arrives in chunks where its lines end. What it keeps of a
// chunk is the text behind the last line feed: nothing, when the piece ends in
// one.
class LineCutter {
 public:
  // Hands the lines that `chunk` completes to `processor`: the one that was
  // begun before by itself, the others at once.
  void add(std::string_view chunk, TextProcessor& processor, Printer& printer);

  // Hands on what is kept, if anything, as a line, and ends the processor's
  // run. The cutter is not to be used afterwards.
  void finish(TextProcessor& processor, Printer& printer);

 private:
  std::string begun_;
};

}  // namespace QorCliUtilities

#endif
