#include <gtest/gtest.h>
#include <link.h>
#include <sys/mman.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "plugins/LibraryCopy.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

using Header = ElfW(Ehdr);
using Section = ElfW(Shdr);
using Symbol = ElfW(Sym);

std::string contentOf(std::string const& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// This program has all that matters of a library.
std::string library() { return contentOf("/proc/self/exe"); }

std::string copied(std::string const& content) {
  FileDescriptor const file(::memfd_create("library", MFD_CLOEXEC));
  EXPECT_EQ(::write(file.get(), content.data(), content.size()),
            static_cast<ssize_t>(content.size()));
  LibraryCopy const copy(file);
  return contentOf(copy.path());
}

Header& header(std::string& content) {
  return *reinterpret_cast<Header*>(content.data());
}

Section& dynamicSymbols(std::string& content) {
  auto* section = reinterpret_cast<Section*>(&content[header(content).e_shoff]);
  while (section->sh_type != SHT_DYNSYM) ++section;
  return *section;
}

// Of a symbol that is not the first, which stands for none.
unsigned char& symbolInfo(std::string& content) {
  return reinterpret_cast<Symbol*>(
             &content[dynamicSymbols(content).sh_offset])[1]
      .st_info;
}

TEST(LibraryCopyTest, sharesNoUniqueData) {
  std::string content = library();
  symbolInfo(content) = ELF64_ST_INFO(STB_GLOBAL, STT_OBJECT);
  std::string const expected = copied(content);
  symbolInfo(content) = ELF64_ST_INFO(STB_GNU_UNIQUE, STT_OBJECT);
  EXPECT_TRUE(copied(content) == expected);
}

TEST(LibraryCopyTest, refusesWhatItCannotRead) {
  struct {
    char const* what;
    std::function<void(std::string&)> spoil;
  } const rows[] = {
      {"empty", [](std::string& c) { c.clear(); }},
      {"a header cut short", [](std::string& c) { c.resize(20); }},
      {"cut short", [](std::string& c) { c.resize(c.size() / 2); }},
      {"no ELF", [](std::string& c) { c[1] = 'F'; }},
      {"foreign class", [](std::string& c) { c[EI_CLASS] ^= 3; }},
      {"no sections", [](std::string& c) { header(c).e_shnum = 0; }},
      {"other sections", [](std::string& c) { ++header(c).e_shentsize; }},
      {"sections behind the end",
       [](std::string& c) { header(c).e_shoff = c.size() + 8; }},
      {"sections far away",
       [](std::string& c) { header(c).e_shoff = ~std::size_t{7}; }},
      {"misaligned sections", [](std::string& c) { ++header(c).e_shoff; }},
      {"no dynamic symbols",
       [](std::string& c) { dynamicSymbols(c).sh_type = SHT_NULL; }},
      {"other symbols", [](std::string& c) { ++dynamicSymbols(c).sh_entsize; }},
      {"huge symbols",
       [](std::string& c) { dynamicSymbols(c).sh_size = ~std::size_t{0}; }},
      {"misaligned symbols",
       [](std::string& c) { ++dynamicSymbols(c).sh_offset; }},
  };
  for (auto const& row : rows) {
    std::string content = library();
    row.spoil(content);
    try {
      copied(content);
      ADD_FAILURE() << row.what;
    } catch (PluginFailure const& failure) {
      EXPECT_STREQ(failure.what(), "its dynamic symbols cannot be read")
          << row.what;
    }
  }
}

}  // namespace
}  // namespace QorCliEngine
