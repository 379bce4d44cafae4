#include "RecordWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

namespace Qor {
namespace {

constexpr unsigned kDefaultLevel = 4;
constexpr mode_t kLogFileMode = 0644;

unsigned levelFromEnvironment() {
  char const* text = std::getenv("QOR_LOG_LEVEL");
  if (text == nullptr) return kDefaultLevel;
  unsigned level = 0;
  char const* end = text + std::strlen(text);
  auto const result = std::from_chars(text, end, level);
  return result.ec == std::errc() && result.ptr == end ? level : kDefaultLevel;
}

int openLogFile() {
  char const* path = std::getenv("QOR_LOG_FILE");
  if (path == nullptr || *path == '\0') return STDERR_FILENO;
  int const file =
      open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, kLogFileMode);
  return file < 0 ? STDERR_FILENO : file;
}

std::string formatted(char const* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  int const length = std::vsnprintf(nullptr, 0, format, again);
  va_end(again);
  if (length < 0) return {};
  std::string text(static_cast<std::size_t>(length), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, arguments);
  return text;
}

char const* baseName(char const* path) {
  char const* slash = std::strrchr(path, '/');
  return slash == nullptr ? path : slash + 1;
}

bool isControl(char c) {
  auto const byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

void appendEscaped(std::string const& text, std::string& record) {
  for (char const c : text) {
    if (c == '\n') {
      record += "\\n";
    } else if (isControl(c)) {
      char escape[sizeof "\\xNN"];
      std::snprintf(escape, sizeof escape, "\\x%02X",
                    unsigned{static_cast<unsigned char>(c)});
      record += escape;
    } else {
      record += c;
    }
  }
}

void writeAll(int file, std::string const& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    ssize_t const n = ::write(file, text.data() + done, text.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return;
    done += static_cast<std::size_t>(n);
  }
}

}  // namespace

RecordWriter::RecordWriter()
    : level_(levelFromEnvironment()), file_(openLogFile()) {}

RecordWriter::~RecordWriter() {
  if (file_ != STDERR_FILENO) close(file_);
}

void RecordWriter::write(RecordOrigin const& origin, char const* format,
                         va_list arguments) noexcept {
  try {
    std::string record = origin.kind;
    record += ' ' + std::to_string(origin.value) + ' ' + origin.subsystem +
              ' ' + baseName(origin.file) + ':' + std::to_string(origin.line) +
              ' ' + origin.function + ": ";
    appendEscaped(formatted(format, arguments), record);
    record += '\n';
    writeAll(file_, record);
  } catch (std::exception const&) {
    return;
  }
}

}  // namespace Qor
