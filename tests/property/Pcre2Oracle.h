#ifndef QOR_TEST_PCRE2_ORACLE_H
#define QOR_TEST_PCRE2_ORACLE_H

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace qor_test {

// The answers of PCRE2's interpreter for a pattern.
class Pcre2Oracle {
 public:
  // A line may take `maxSteps` backtracking steps and `maxMemory` KiB.
  Pcre2Oracle(std::string const& pattern, bool ignoreCase,
              std::uint32_t maxSteps = 1'000'000,
              std::uint32_t maxMemory = 20 * 1024);

  // Whether PCRE2 accepts the pattern.
  bool isValid() const { return code_ != nullptr; }

  // Whether the first match in `line`, which comes without its line feed, is
  // not empty. Nothing if that exceeds the steps or the memory, or PCRE2 fails.
  // Requires isValid().
  std::optional<bool> matches(std::string_view line) const;

  // Whether a group recurses endlessly on `line`, without start optimizations:
  // these may avoid the recursion, but differ with callouts.
  bool hasEndlessCall(std::string_view line) const;

  // Whether the pattern can also be compiled with callouts.
  bool fitsWithCallouts() const {
    return compiled(PCRE2_AUTO_CALLOUT) != nullptr;
  }

 private:
  struct Free {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
    void operator()(pcre2_match_data* data) const {
      pcre2_match_data_free(data);
    }
    void operator()(pcre2_compile_context* context) const {
      pcre2_compile_context_free(context);
    }
    void operator()(pcre2_match_context* context) const {
      pcre2_match_context_free(context);
    }
  };

  std::unique_ptr<pcre2_code, Free> compiled(std::uint32_t options) const;

  std::string pattern_;
  bool ignoreCase_;
  std::unique_ptr<pcre2_code, Free> code_;
  std::unique_ptr<pcre2_match_data, Free> data_;
  std::unique_ptr<pcre2_match_context, Free> context_;
};

}  // namespace qor_test

#endif
