#ifndef QOR_TEST_RANDOM_PATTERN_H
#define QOR_TEST_RANDOM_PATTERN_H

#include <cstddef>
#include <random>
#include <string>

namespace qor_test {

// Generates Perl-compatible regular expressions from a grammar, some of them
// malformed, and lines that have a chance of matching.
class RandomPattern {
 public:
  // `random` is not owned.
  explicit RandomPattern(std::mt19937& random) : random_(random) {}

  // A pattern without NUL bytes and line feeds.
  std::string pattern();

  // A pattern of common items: characters, escapes, classes, groups,
  // alternatives, greedy and lazy quantifiers, anchors, lookarounds. Few are
  // malformed.
  std::string commonPattern();

  // A line of up to 24 bytes, without NUL bytes and line feeds.
  std::string line();

  // A number below `count`, which is at least 1.
  std::size_t below(std::size_t count);

 private:
  std::string alternatives(int depth);
  std::string sequence(int depth);
  std::string item(int depth);
  std::string group(int depth);
  std::string commonAlternatives(int depth);
  std::string commonSequence(int depth);
  std::string spoiled(std::string pattern);

  std::mt19937& random_;
};

}  // namespace qor_test

#endif
