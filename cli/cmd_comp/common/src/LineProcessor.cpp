#include "LineProcessor.h"

#include <algorithm>

namespace QorCliUtilities {
namespace {

void append(std::string_view added, std::string& text) {
  std::size_t nul = text.size();
  text.append(added);
  while ((nul = text.find('\0', nul)) != std::string::npos) text[nul] = ' ';
}

}  // namespace

void Printer::line(std::string_view line) { this->line("", line); }

void Printer::line(std::string_view prefix, std::string_view line) {
  std::string& text = textWithRoomFor(prefix.size() + line.size() + 1);
  append(prefix, text);
  append(line, text);
  text += '\n';
}

void Printer::lines(std::string_view lines) {
  append(lines, textWithRoomFor(lines.size()));
}

// Returns the last text, which may grow by `size` bytes. Texts are limited to
// kMaxText, so that printing after a long line never copies it again.
std::string& Printer::textWithRoomFor(std::size_t size) {
  constexpr std::size_t kMaxText = 64 * 1024;  // bytes, except for one line
  if (texts_.empty() || texts_.back().size() + size > kMaxText) {
    texts_.emplace_back().reserve(size);
  }
  return texts_.back();
}

void TextProcessor::end(Printer&) {}

void LineProcessor::text(std::string_view lines, Printer& printer) {
  while (!lines.empty()) {
    std::size_t const feed = lines.find('\n');
    line(lines.substr(0, feed), printer);
    lines.remove_prefix(std::min(feed, lines.size() - 1) + 1);
  }
}

void LineCutter::add(std::string_view chunk, TextProcessor& processor,
                     Printer& printer) {
  std::size_t begin = 0;
  if (!partialLine_.empty()) {
    begin = chunk.find('\n') + 1;  // 0: there is none
    partialLine_.append(begin == 0 ? chunk : chunk.substr(0, begin));
    if (begin == 0) return;
    processor.text(partialLine_, printer);
  }
  std::size_t const end = chunk.rfind('\n') + 1;  // 0: there is none
  if (end > begin) {
    processor.text(chunk.substr(begin, end - begin), printer);
  }
  // A swap, to free the memory of a long line.
  std::string(chunk.substr(std::max(begin, end))).swap(partialLine_);
}

void LineCutter::finish(TextProcessor& processor, Printer& printer) {
  if (!partialLine_.empty()) {
    partialLine_ += '\n';
    processor.text(partialLine_, printer);
  }
  processor.end(printer);
}

}  // namespace QorCliUtilities
