#ifndef QOR_CLI_ENGINE_EDIT_LIBRARY_H
#define QOR_CLI_ENGINE_EDIT_LIBRARY_H

#include <histedit.h>

namespace QorCliEngine {

// The functions of libedit, by their names there. Only a line that is typed at
// a terminal needs them, and loading the library with those that it needs takes
// a tenth of the time of a short run: so it is not linked.
struct EditLibrary {
  decltype(&::el_init) el_init;
  decltype(&::el_end) el_end;
  decltype(&::el_set) el_set;
  decltype(&::el_wset) el_wset;
  decltype(&::el_get) el_get;
  decltype(&::el_gets) el_gets;
  decltype(&::el_line) el_line;
  decltype(&::el_wline) el_wline;
  decltype(&::el_insertstr) el_insertstr;
  decltype(&::el_deletestr) el_deletestr;
  decltype(&::el_cursor) el_cursor;
  decltype(&::el_resize) el_resize;
  decltype(&::history_init) history_init;
  decltype(&::history_end) history_end;
  decltype(&::history) history;

  // Loads the library at the first call, for good. Throws std::runtime_error
  // with the loader's reason when that fails. One thread.
  static EditLibrary const& get();
};

}  // namespace QorCliEngine

#endif
