#ifndef QOR_CLI_TOKENIZER_H
#define QOR_CLI_TOKENIZER_H

#include <string>

// Helpers of the tokenizer, AutoCompleteTree::tokenize. Stateless; callable
// from any thread. They throw only std::bad_alloc.

namespace QorCliUtilities {

// Returns `pattern` with every "(" replaced by "(?:", regardless of context: a
// regular expression without capturing groups.
std::string statefreeRegex(std::string const& pattern);

// Returns `s` without its quotes: the text after the first double quote, with a
// length in bytes of the index of the last one minus 1. If `s` begins with a
// quote, that is the text between the two; otherwise it extends past the last
// one: x"abc" gives abc". Without any quote, returns `s`. Does not change `s`.
std::string trimQuotes(std::string& s);

}  // namespace QorCliUtilities

#endif
