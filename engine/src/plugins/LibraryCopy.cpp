#include "plugins/LibraryCopy.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

[[noreturn]] void throwSystemReason(char const* what) {
  throw PluginFailure(std::string(what) + ": " + std::strerror(errno));
}

std::string contentOf(FileDescriptor const& file) {
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) throwSystemReason("cannot read it");
  std::string content(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t done = 0;
  while (done < content.size()) {
    ssize_t const count =
        ::pread(file.get(), &content[done], content.size() - done,
                static_cast<off_t>(done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throwSystemReason("cannot read it");
    if (count == 0) throw PluginFailure("its file has been cut short");
    done += static_cast<std::size_t>(count);
  }
  return content;
}

void write(std::string const& content, FileDescriptor const& file) {
  std::size_t done = 0;
  while (done < content.size()) {
    ssize_t const count =
        ::write(file.get(), &content[done], content.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throwSystemReason("cannot copy it");
    done += static_cast<std::size_t>(count);
  }
}

constexpr unsigned char kOwnClass =
    sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

[[noreturn]] void throwUnreadable() {
  throw PluginFailure("its dynamic symbols cannot be read");
}

// `count` records of a library's content. Throws when they are not all in it.
template <class Record>
Record* recordsAt(std::string& content, std::size_t offset, std::size_t count) {
  bool const begins = offset <= content.size() && offset % alignof(Record) == 0;
  if (!begins || count > (content.size() - offset) / sizeof(Record)) {
    throwUnreadable();
  }
  return reinterpret_cast<Record*>(&content[offset]);
}

ElfW(Ehdr) const& headerOf(std::string& content) {
  auto const& header = *recordsAt<ElfW(Ehdr)>(content, 0, 1);
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
      header.e_ident[EI_CLASS] != kOwnClass ||
      header.e_shentsize != sizeof(ElfW(Shdr))) {
    throwUnreadable();
  }
  return header;
}

void unshare(ElfW(Sym) & symbol) {
  // Both word sizes have the same layout here.
  if (ELF64_ST_BIND(symbol.st_info) != STB_GNU_UNIQUE) return;
  symbol.st_info = static_cast<unsigned char>(
      ELF64_ST_INFO(STB_GLOBAL, ELF64_ST_TYPE(symbol.st_info)));
}

void unshareSymbols(std::string& content, ElfW(Shdr) const& section) {
  if (section.sh_entsize != sizeof(ElfW(Sym))) throwUnreadable();
  std::size_t const count = section.sh_size / sizeof(ElfW(Sym));
  auto* const symbols = recordsAt<ElfW(Sym)>(content, section.sh_offset, count);
  for (std::size_t i = 0; i < count; ++i) unshare(symbols[i]);
}

// The compiler binds the data of templates and of inline functions so that a
// process has it once, in whatever libraries it is defined: singletons above
// all, unless they are hidden. A copy is to have its own.
void unshareSymbols(std::string& content) {
  auto const& header = headerOf(content);
  auto const* const sections =
      recordsAt<ElfW(Shdr)>(content, header.e_shoff, header.e_shnum);
  auto const* const end = sections + header.e_shnum;
  auto const* const dynamic = std::find_if(
      sections, end,
      [](ElfW(Shdr) const& section) { return section.sh_type == SHT_DYNSYM; });
  if (dynamic == end) throwUnreadable();
  unshareSymbols(content, *dynamic);
}

bool isLoaded(std::string const& path) {
  void* const handle = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (handle == nullptr) return false;
  ::dlclose(handle);
  return true;
}

}  // namespace

LibraryCopy::LibraryCopy(FileDescriptor const& library)
    : file_(::memfd_create("plug-in", MFD_CLOEXEC)) {
  if (!file_) throwSystemReason("cannot copy it");
  std::string content = contentOf(library);
  unshareSymbols(content);
  write(content, file_);
}

LibraryCopy::~LibraryCopy() {
  if (file_ && isLoaded(path())) file_.release();
}

std::string LibraryCopy::path() const {
  return "/proc/self/fd/" + std::to_string(file_.get());
}

}  // namespace QorCliEngine
