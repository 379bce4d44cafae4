#include "TextSearch.h"

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace QorCliPipe {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr char kCaseBit = 0x20;

bool isLetter(char c) {
  char const lower = static_cast<char>(c | kCaseBit);
  return lower >= 'a' && lower <= 'z';
}

// How rare a byte is in what devices print: a guess that costs time where it is
// wrong, but nothing else.
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

TextSearch::TextSearch(std::string const& wanted, bool ignoreCase)
    : wanted_(wanted), folds_(wanted.size(), '\0') {
  for (std::size_t i = 0; ignoreCase && i < wanted_.size(); ++i) {
    if (!isLetter(wanted_[i])) continue;
    folds_[i] = kCaseBit;
    wanted_[i] = static_cast<char>(wanted_[i] | kCaseBit);
  }
  first_ = rarest(wanted_, kNone);
  second_ = rarest(wanted_, first_);
}

bool TextSearch::standsAt(char const* place) const {
  for (std::size_t i = 0; i < wanted_.size(); ++i) {
    if ((place[i] | folds_[i]) != wanted_[i]) return false;
  }
  return true;
}

std::size_t TextSearch::findCarefully(std::string_view text,
                                      std::size_t from) const {
  for (std::size_t i = from; i + wanted_.size() <= text.size(); ++i) {
    if (standsAt(text.data() + i)) return i;
  }
  return kNone;
}

#ifdef __SSE2__

std::size_t TextSearch::find(std::string_view text, std::size_t from) const {
  constexpr std::size_t kPlaces = sizeof(__m128i);
  constexpr std::size_t kSteps = 2;
  __m128i const firstByte = _mm_set1_epi8(wanted_[first_]);
  __m128i const firstFold = _mm_set1_epi8(folds_[first_]);
  __m128i const secondByte = _mm_set1_epi8(wanted_[second_]);
  __m128i const secondFold = _mm_set1_epi8(folds_[second_]);
  auto const load = [](char const* place) {
    return _mm_loadu_si128(reinterpret_cast<__m128i const*>(place));
  };
  auto const candidatesAt = [&](char const* place) {
    __m128i const first = _mm_or_si128(load(place + first_), firstFold);
    __m128i const second = _mm_or_si128(load(place + second_), secondFold);
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_and_si128(
        _mm_cmpeq_epi8(first, firstByte), _mm_cmpeq_epi8(second, secondByte))));
  };
  std::size_t i = from;
  for (; i + wanted_.size() - 1 + kSteps * kPlaces <= text.size();
       i += kSteps * kPlaces) {
    char const* const place = text.data() + i;
    unsigned candidates = candidatesAt(place) | candidatesAt(place + kPlaces)
                                                    << kPlaces;
    for (; candidates != 0; candidates &= candidates - 1) {
      auto const offset = static_cast<std::size_t>(__builtin_ctz(candidates));
      if (standsAt(place + offset)) return i + offset;
    }
  }
  return findCarefully(text, i);
}

#else

std::size_t TextSearch::find(std::string_view text, std::size_t from) const {
  return findCarefully(text, from);
}

#endif

AnyTextSearch::AnyTextSearch(std::vector<std::string> const& wanted,
                             bool ignoreCase) {
  for (std::string const& text : wanted)
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

}  // namespace QorCliPipe
