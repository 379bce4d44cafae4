#include "History.h"

#include <cstdlib>
#include <filesystem>
#include <new>
#include <system_error>

namespace QorCliEngine {
namespace {

namespace fs = std::filesystem;

// The user's state directory, or an empty path.
fs::path stateDirectory() {
  char const* const state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && *state == '/') return state;
  char const* const home = std::getenv("HOME");
  if (home == nullptr || *home != '/') return {};
  return fs::path(home) / ".local" / "state";
}

// The file's path, with its directory made; empty when that is impossible.
std::string historyFile() {
  fs::path const state = stateDirectory();
  if (state.empty()) return "";
  fs::path const directory = state / "qorcli";
  std::error_code error;
  bool const made = fs::create_directories(directory, error);
  if (error) return "";
  if (made) fs::permissions(directory, fs::perms::owner_all, error);
  return directory / "history";
}

}  // namespace

History::History() : history_(history_init()), file_(historyFile()) {
  if (history_ == nullptr) throw std::bad_alloc();
  HistEvent event;
  history(history_, &event, H_SETSIZE, kMostLines);
  history(history_, &event, H_SETUNIQUE, 1);
  if (!file_.empty()) history(history_, &event, H_LOAD, file_.c_str());
}

History::~History() {
  HistEvent event;
  if (!file_.empty()) history(history_, &event, H_SAVE, file_.c_str());
  history_end(history_);
}

void History::add(std::string const& line) {
  HistEvent event;
  history(history_, &event, H_ENTER, line.c_str());
}

}  // namespace QorCliEngine
