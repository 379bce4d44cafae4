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

// What PCRE2's interpreter says of a pattern, and of lines under it.
class Pcre2Oracle {
 public:
  // A line may take `mostSteps` backtracking steps and `mostMemory` KiB.
  Pcre2Oracle(std::string const& pattern, bool ignoreCase,
              std::uint32_t mostSteps = 1'000'000,
              std::uint32_t mostMemory = 20 * 1024);

  // Whether PCRE2 takes the pattern.
  bool isValid() const { return code_ != nullptr; }

  // Whether the first match in `line`, which comes without its line feed, is
  // not empty. Nothing when that takes more steps or more memory, and when
  // PCRE2 has a reason of its own not to answer. Only when the pattern is
  // valid.
  std::optional<bool> matches(std::string_view line) const;

  // Whether a group calls itself without end over `line`, where PCRE2 has to
  // try: what it knows of a pattern beforehand may spare it that, and is not
  // the same with callouts.
  bool hasEndlessCall(std::string_view line) const;

  // Whether the pattern can be compiled with callouts, too.
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
