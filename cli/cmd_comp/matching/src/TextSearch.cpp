#include "TextSearch.h"

#include <endian.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace QorCliMatching {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr char kCaseBit = 0x20;

// Bytes compared at once, as the compiler's vector type, which it supports on
// every processor.
using Bytes = unsigned char __attribute__((vector_size(16)));
using Words = std::array<std::uint64_t, sizeof(Bytes) / 8>;

// An out parameter, because returning a vector has a different ABI without
// vector registers.
void load(Bytes& bytes, char const* place) {
  std::memcpy(&bytes, place, sizeof bytes);
}

bool isLetter(char c) {
  char const lower = static_cast<char>(c | kCaseBit);
  return lower >= 'a' && lower <= 'z';
}

// How rare a byte is in device output: a guess that only affects speed.
std::size_t rarity(char c) {
  constexpr std::string_view commonFirst =
      " 0123456789etaoinsrcdlpmu:-.fhgbvkwyx";
  return std::min(commonFirst.find(c), commonFirst.size());
}

std::size_t rarest(std::string const& text, std::size_t except) {
  std::size_t best = except == 0 && text.size() > 1 ? 1 : 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i != except && rarity(text[i]) > rarity(text[best])) best = i;
  }
  return best;
}

}  // namespace

TextSearch::TextSearch(std::string const& substring, bool ignoreCase)
    : substring_(substring), folds_(substring.size(), '\0') {
  for (std::size_t i = 0; ignoreCase && i < substring_.size(); ++i) {
    if (!isLetter(substring_[i])) continue;
    folds_[i] = kCaseBit;
    substring_[i] = static_cast<char>(substring_[i] | kCaseBit);
  }
  first_ = rarest(substring_, kNone);
  second_ = rarest(substring_, first_);
}

bool TextSearch::matchesAt(char const* place) const {
  for (std::size_t i = 0; i < substring_.size(); ++i) {
    if ((place[i] | folds_[i]) != substring_[i]) return false;
  }
  return true;
}

std::size_t TextSearch::find(std::string_view text, std::size_t from) const {
  Bytes const firstByte =
      Bytes{} + static_cast<unsigned char>(substring_[first_]);
  Bytes const firstFold = Bytes{} + static_cast<unsigned char>(folds_[first_]);
  Bytes const secondByte =
      Bytes{} + static_cast<unsigned char>(substring_[second_]);
  Bytes const secondFold =
      Bytes{} + static_cast<unsigned char>(folds_[second_]);
  std::size_t i = from;
  for (; i + substring_.size() - 1 + sizeof(Bytes) <= text.size();
       i += sizeof(Bytes)) {
    char const* const place = text.data() + i;
    Words candidates;
    Bytes first;
    Bytes second;
    load(first, place + first_);
    load(second, place + second_);
    auto const equal = ((first | firstFold) == firstByte) &
                       ((second | secondFold) == secondByte);
    std::memcpy(&candidates, &equal, sizeof equal);
    if ((candidates[0] | candidates[1]) == 0) continue;
    for (std::size_t word = 0; word < candidates.size(); ++word) {
      for (std::uint64_t left = le64toh(candidates[word]); left != 0;) {
        auto const byte = static_cast<std::size_t>(__builtin_ctzll(left)) / 8;
        if (matchesAt(place + 8 * word + byte)) return i + 8 * word + byte;
        left &= ~(std::uint64_t{0xFF} << (8 * byte));
      }
    }
  }
  return findBytewise(text, i);
}

std::size_t TextSearch::findBytewise(std::string_view text,
                                     std::size_t from) const {
  for (std::size_t i = from; i + substring_.size() <= text.size(); ++i) {
    if (matchesAt(text.data() + i)) return i;
  }
  return kNone;
}

AnyTextSearch::AnyTextSearch(std::vector<std::string> const& substrings,
                             bool ignoreCase) {
  for (std::string const& text : substrings)
    searches_.emplace_back(text, ignoreCase);
  next_.resize(searches_.size());
}

void AnyTextSearch::reset(std::string_view text) {
  text_ = text;
  for (std::size_t i = 0; i < searches_.size(); ++i) {
    next_[i] = searches_[i].find(text_, 0);
  }
}

std::size_t AnyTextSearch::find(std::size_t from) {
  std::size_t nearest = kNone;
  for (std::size_t i = 0; i < searches_.size(); ++i) {
    if (next_[i] < from) next_[i] = searches_[i].find(text_, from);
    nearest = std::min(nearest, next_[i]);
  }
  return nearest;
}

}  // namespace QorCliMatching
