#ifndef QOR_TEST_ELF_SYMBOLS_H
#define QOR_TEST_ELF_SYMBOLS_H

#include <string>
#include <vector>

namespace qor_test {

// The exported symbols of the shared library `path`, sorted: its dynamic
// symbols that are defined and not local. Throws std::runtime_error if the file
// is not a shared library of this process's word size.
std::vector<std::string> exportedSymbols(std::string const& path);

}  // namespace qor_test

#endif
