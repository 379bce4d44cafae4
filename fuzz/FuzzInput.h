#ifndef QOR_FUZZ_INPUT_H
#define QOR_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace qor_fuzz {

// Reads values from a fuzzer's bytes; zeros and empty texts at their end.
class FuzzInput {
 public:
  FuzzInput(std::uint8_t const* data, std::size_t size)
      : data_(data), size_(size) {}

  bool empty() const { return size_ == 0; }

  std::uint8_t byte() {
    if (size_ == 0) return 0;
    --size_;
    return *data_++;
  }

  // Text up to the next line feed, which is consumed; without zero bytes, like
  // all texts of the framework.
  std::string line() {
    std::string text;
    while (size_ != 0) {
      auto const c = static_cast<char>(byte());
      if (c == '\n') break;
      if (c != '\0') text.push_back(c);
    }
    return text;
  }

  // The remaining text, without zero bytes.
  std::string rest() {
    std::string text;
    while (size_ != 0) {
      auto const c = static_cast<char>(byte());
      if (c != '\0') text.push_back(c);
    }
    return text;
  }

 private:
  std::uint8_t const* data_;
  std::size_t size_;
};

}  // namespace qor_fuzz

#endif
