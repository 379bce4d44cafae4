#ifndef QOR_CLI_TOKENIZER_H
#define QOR_CLI_TOKENIZER_H

#include <string>

// Helpers of the tokenizer, which is AutoCompleteTree::tokenize. They keep
// nothing and may be called from any thread; only std::bad_alloc is thrown.

namespace QorCliUtilities {

// Returns `pattern` with every "(" replaced by "(?:", wherever it stands: a
// regular expression without capturing groups.
std::string statefreeRegex(std::string const& pattern);

// Returns `s` without its quotes: the text after the first double quote, as
// many bytes long as the index of the last one less 1. That is the text between
// the two when `s` begins with a quote, and otherwise runs on behind the last
// one: x"abc" gives abc". Without any quote, all of `s`. `s` itself is not
// changed.
std::string trimQuotes(std::string& s);

}  // namespace QorCliUtilities

#endif
