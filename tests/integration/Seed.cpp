#include "Seed.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <random>
#include <stdexcept>

namespace qor_test {
namespace {

std::uint32_t chooseSeed() {
  char const* text = std::getenv("QOR_TEST_SEED");
  if (text == nullptr) return std::random_device()();
  std::uint32_t seed = 0;
  char const* const end = text + std::strlen(text);
  auto const result = std::from_chars(text, end, seed);
  if (result.ec != std::errc() || result.ptr != end) {
    throw std::runtime_error("QOR_TEST_SEED is no number of 32 bits");
  }
  return seed;
}

}  // namespace

std::uint32_t testSeed() {
  static std::uint32_t const seed = [] {
    std::uint32_t const chosen = chooseSeed();
    std::cout << "To repeat this run: QOR_TEST_SEED=" << chosen << std::endl;
    return chosen;
  }();
  return seed;
}

}  // namespace qor_test
