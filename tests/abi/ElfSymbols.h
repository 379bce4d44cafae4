#ifndef QOR_TEST_ELF_SYMBOLS_H
#define QOR_TEST_ELF_SYMBOLS_H

#include <string>
#include <vector>

namespace qor_test {

// The names that the shared library in the file `path` gives to others, sorted:
// its dynamic symbols that are defined in it and not local. The file must be of
// this process's word size; throws std::runtime_error when it is not, or is no
// shared library.
std::vector<std::string> exportedSymbols(std::string const& path);

}  // namespace qor_test

#endif
