#ifndef QOR_CLI_LINE_PROCESSOR_H
#define QOR_CLI_LINE_PROCESSOR_H

#include <string>
#include <string_view>
#include <vector>

namespace QorCliUtilities {

// The output of a pipe command. Valid during the call that receives it. Output
// of a call that throws is discarded.
//
// Output is copied once, and a long line takes no more memory than its length.
// A NUL, which would end the text for the engine, is printed as a blank.
class Printer {
 public:
  // Appends output to the last of `texts`, which are not owned, or as further
  // texts.
  explicit Printer(std::vector<std::string>& texts) : texts_(texts) {}

  // Prints `line` and a line feed.
  void line(std::string_view line);

  // Prints `prefix`, `line` and a line feed.
  void line(std::string_view prefix, std::string_view line);

  // Prints whole lines, each with its line feed.
  void lines(std::string_view lines);

 private:
  std::string& textWithRoomFor(std::size_t size);

  std::vector<std::string>& texts_;
};

// One run of a pipe command: an object created at the start of an action, fed
// the action's text, and deleted when the text is complete or the action fails.
//
// Every function, including the constructor, may throw: the operator then sees
// "ERROR: " and the reason (PipeText.h), and the action fails. One call at a
// time.
class TextProcessor {
 public:
  virtual ~TextProcessor() = default;

  // Processes the next chunk of the text: one or more lines, each with its line
  // feed. `lines` is valid only during the call.
  virtual void text(std::string_view lines, Printer& printer) = 0;

  // Called when the text is complete. Prints nothing, unless overridden.
  virtual void end(Printer& printer);
};

// A TextProcessor that works line by line.
class LineProcessor : public TextProcessor {
 public:
  // Processes the next line, without its line feed, valid only during the call.
  virtual void line(std::string_view text, Printer& printer) = 0;

  void text(std::string_view lines, Printer& printer) final;
};

// Splits a text that arrives in arbitrary chunks into whole lines. It buffers
// only the text after a chunk's last line feed. One call at a time.
class LineCutter {
 public:
  // Passes the lines that `chunk` completes to `processor`: first the buffered
  // one by itself, then the others together.
  void add(std::string_view chunk, TextProcessor& processor, Printer& printer);

  // Passes on the buffered text, if any, as a line, and calls the processor's
  // end(). The cutter must not be used afterwards.
  void finish(TextProcessor& processor, Printer& printer);

 private:
  std::string partialLine_;
};

}  // namespace QorCliUtilities

#endif
