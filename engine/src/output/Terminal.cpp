#include "output/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>

#include "output/Layout.h"

namespace QorCliEngine {
namespace Terminal {
namespace {

constexpr std::size_t kDefaultRows = 24;
constexpr std::size_t kFewestRows = 2;
constexpr std::size_t kFewestColumns = 20;

}  // namespace

Size size() {
  winsize window{};
  ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &window);
  std::size_t const rows = window.ws_row != 0 ? window.ws_row : kDefaultRows;
  std::size_t const columns =
      window.ws_col != 0 ? window.ws_col : Layout::kDefaultWidth;
  return {std::max(rows, kFewestRows), std::max(columns, kFewestColumns)};
}

}  // namespace Terminal
}  // namespace QorCliEngine
