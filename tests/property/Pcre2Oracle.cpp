#include "Pcre2Oracle.h"

namespace qor_test {
namespace {

PCRE2_SPTR bytesOf(std::string_view text) {
  return reinterpret_cast<PCRE2_SPTR>(text.data());
}

}  // namespace

Pcre2Oracle::Pcre2Oracle(std::string const& pattern, bool ignoreCase,
                         std::uint32_t maxSteps, std::uint32_t maxMemory)
    : pattern_(pattern),
      ignoreCase_(ignoreCase),
      code_(compiled(0)),
      data_(pcre2_match_data_create(1, nullptr)),
      context_(pcre2_match_context_create(nullptr)) {
  pcre2_set_match_limit(context_.get(), maxSteps);
  pcre2_set_heap_limit(context_.get(), maxMemory);
}

std::unique_ptr<pcre2_code, Pcre2Oracle::Free> Pcre2Oracle::compiled(
    std::uint32_t options) const {
  std::unique_ptr<pcre2_compile_context, Free> const context(
      pcre2_compile_context_create(nullptr));
  pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
  if (ignoreCase_) options |= PCRE2_CASELESS;
  int error = 0;
  PCRE2_SIZE offset = 0;
  return std::unique_ptr<pcre2_code, Free>(
      pcre2_compile(bytesOf(pattern_), pattern_.size(), options, &error,
                    &offset, context.get()));
}

bool Pcre2Oracle::hasEndlessCall(std::string_view line) const {
  auto const code = compiled(PCRE2_NO_START_OPTIMIZE);
  return pcre2_match(code.get(), bytesOf(line), line.size(), 0, PCRE2_NO_JIT,
                     data_.get(), context_.get()) == PCRE2_ERROR_RECURSELOOP;
}

std::optional<bool> Pcre2Oracle::matches(std::string_view line) const {
  int const status = pcre2_match(code_.get(), bytesOf(line), line.size(), 0,
                                 PCRE2_NO_JIT, data_.get(), context_.get());
  if (status == PCRE2_ERROR_NOMATCH) return false;
  if (status < 0) return std::nullopt;
  PCRE2_SIZE const* const match = pcre2_get_ovector_pointer(data_.get());
  // \K may start a match after its end, where it lasts to the end of the line.
  std::size_t const end = match[0] > match[1] ? line.size() : match[1];
  return match[0] != end;
}

}  // namespace qor_test
