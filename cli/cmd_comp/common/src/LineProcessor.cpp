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
  std::string& text = room(prefix.size() + line.size() + 1);
  append(prefix, text);
  append(line, text);
  text += '\n';
}

void Printer::lines(std::string_view lines) {
  append(lines, room(lines.size()));
}

// Returns the last text, which has room for `size` bytes more. A text grows to
// kLongestText and no further, so that a long line is never copied again when
// more is printed behind it.
std::string& Printer::room(std::size_t size) {
  constexpr std::size_t kLongestText = 64 * 1024;  // bytes, unless of one line
  if (texts_.empty() || texts_.back().size() + size > kLongestText) {
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
  if (!begun_.empty()) {
    begin = std::min(chunk.find('\n'), chunk.size() - 1) + 1;
    begun_.append(chunk.substr(0, begin));
    if (begun_.back() != '\n') return;
    processor.text(begun_, printer);
  }
  std::size_t const end = chunk.rfind('\n') + 1;  // 0: there is none
  if (end > begin) {
    processor.text(chunk.substr(begin, end - begin), printer);
  }
  // What a long line took is given back.
  std::string(chunk.substr(std::max(begin, end))).swap(begun_);
}

void LineCutter::finish(TextProcessor& processor, Printer& printer) {
  if (!begun_.empty()) {
    begun_ += '\n';
    processor.text(begun_, printer);
  }
  processor.end(printer);
}

}  // namespace QorCliUtilities
