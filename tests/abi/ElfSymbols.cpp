#include "ElfSymbols.h"

#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace qor_test {
namespace {

constexpr unsigned char kNativeClass =
    sizeof(void*) == 4 ? ELFCLASS32 : ELFCLASS64;

// A file in memory, read record by record.
class Image {
 public:
  explicit Image(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
  }

  template <class Record>
  Record at(std::size_t offset) const {
    require(offset, sizeof(Record));
    Record record;
    std::memcpy(&record, bytes_.data() + offset, sizeof record);
    return record;
  }

  // The NUL-terminated text at `offset`.
  std::string textAt(std::size_t offset) const {
    require(offset, 1);
    std::size_t const end = bytes_.find('\0', offset);
    require(offset, end - offset);
    return bytes_.substr(offset, end - offset);
  }

 private:
  void require(std::size_t offset, std::size_t size) const {
    if (offset > bytes_.size() || size > bytes_.size() - offset) {
      throw std::runtime_error("the file is too short");
    }
  }

  std::string bytes_;
};

ElfW(Ehdr) headerOf(Image const& image) {
  auto const header = image.at<ElfW(Ehdr)>(0);
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
      header.e_ident[EI_CLASS] != kNativeClass || header.e_type != ET_DYN) {
    throw std::runtime_error("the file is no shared library of this machine");
  }
  return header;
}

ElfW(Shdr)
    sectionAt(Image const& image, ElfW(Ehdr) const& header, std::size_t index) {
  return image.at<ElfW(Shdr)>(header.e_shoff + index * header.e_shentsize);
}

ElfW(Shdr) dynamicSymbolSection(Image const& image, ElfW(Ehdr) const& header) {
  for (std::size_t i = 0; i < header.e_shnum; ++i) {
    ElfW(Shdr) const section = sectionAt(image, header, i);
    if (section.sh_type == SHT_DYNSYM) return section;
  }
  throw std::runtime_error("the file has no dynamic symbols");
}

// The layout of st_info is the same for both word sizes.
bool isExported(ElfW(Sym) const& symbol) {
  return symbol.st_shndx != SHN_UNDEF &&
         ELF32_ST_BIND(symbol.st_info) != STB_LOCAL;
}

}  // namespace

std::vector<std::string> exportedSymbols(std::string const& path) {
  Image const image(path);
  ElfW(Ehdr) const header = headerOf(image);
  ElfW(Shdr) const section = dynamicSymbolSection(image, header);
  ElfW(Shdr) const names = sectionAt(image, header, section.sh_link);
  std::vector<std::string> exported;
  for (std::size_t i = 0; i < section.sh_size / section.sh_entsize; ++i) {
    auto const symbol =
        image.at<ElfW(Sym)>(section.sh_offset + i * section.sh_entsize);
    if (!isExported(symbol)) continue;
    exported.push_back(image.textAt(names.sh_offset + symbol.st_name));
  }
  std::sort(exported.begin(), exported.end());
  return exported;
}

}  // namespace qor_test
