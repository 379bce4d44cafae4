#include "terminal/EditLibrary.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace QorCliEngine {
namespace {

// The version of the interface that the header declares.
constexpr char kName[] = "libedit.so.2";

[[noreturn]] void throwLoaderReason() {
  throw std::runtime_error(std::string("cannot load the line editor: ") +
                           ::dlerror());
}

template <typename Function>
void find(void* library, char const* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  if (function == nullptr) throwLoaderReason();
}

EditLibrary load() {
  void* const library = ::dlopen(kName, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throwLoaderReason();
  EditLibrary edit{};
  find(library, "el_init", edit.el_init);
  find(library, "el_end", edit.el_end);
  find(library, "el_set", edit.el_set);
  find(library, "el_wset", edit.el_wset);
  find(library, "el_get", edit.el_get);
  find(library, "el_gets", edit.el_gets);
  find(library, "el_line", edit.el_line);
  find(library, "el_wline", edit.el_wline);
  find(library, "el_insertstr", edit.el_insertstr);
  find(library, "el_deletestr", edit.el_deletestr);
  find(library, "el_cursor", edit.el_cursor);
  find(library, "el_resize", edit.el_resize);
  find(library, "history_init", edit.history_init);
  find(library, "history_end", edit.history_end);
  find(library, "history", edit.history);
  return edit;
}

}  // namespace

EditLibrary const& EditLibrary::get() {
  static EditLibrary const edit = load();
  return edit;
}

}  // namespace QorCliEngine
