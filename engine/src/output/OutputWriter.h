#ifndef QOR_CLI_ENGINE_OUTPUT_WRITER_H
#define QOR_CLI_ENGINE_OUTPUT_WRITER_H

#include <string>

namespace QorCliEngine {

// Where a pipeline's output goes: standard output, in large blocks. For a
// terminal, control characters in it are made visible.
//
// What is to be written is appended to buffer(). Functions throw OutputClosed
// when nobody reads the output any more, and CommandFailure when it cannot be
// written; what was in the buffer is gone then. One thread.
class OutputWriter {
 public:
  enum class Form { kRaw, kVisible };

  explicit OutputWriter(Form form = Form::kRaw) : form_(form) {}
  virtual ~OutputWriter() = default;
  OutputWriter(OutputWriter const&) = delete;
  OutputWriter& operator=(OutputWriter const&) = delete;

  std::string& buffer() { return buffer_; }

  // Writes the buffer when it has come to the size of a block.
  virtual void writeIfFull();

  // Writes the buffer now: nothing more may come for a while.
  virtual void flush();

  // Writes the buffer: the command's output has ended.
  virtual void finish();

  // As finish(), but what has not been written is not wanted any more.
  virtual void drop();

 protected:
  // Writes the buffer to a file descriptor and empties it.
  void writeTo(int descriptor);

  // The buffer as it will be written.
  std::string shown() const;

 private:
  Form form_;
  std::string buffer_;
};

}  // namespace QorCliEngine

#endif
