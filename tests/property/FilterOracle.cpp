#include "FilterOracle.h"

#include <algorithm>

namespace qor_test {
namespace {

// Whether any of the `count` lines from `first` on is selected.
bool anySelected(std::vector<OracleLine> const& lines, std::size_t first,
                 std::size_t count) {
  std::size_t const end = first + std::min(count, lines.size() - first);
  return std::any_of(lines.begin() + static_cast<std::ptrdiff_t>(first),
                     lines.begin() + static_cast<std::ptrdiff_t>(end),
                     [](OracleLine const& line) { return line.selected; });
}

bool isKept(std::vector<OracleLine> const& lines, std::size_t i,
            OracleContext context) {
  std::size_t const reach = std::min(context.after, i);
  return lines[i].selected || anySelected(lines, i - reach, reach) ||
         anySelected(lines, i + 1, context.before);
}

}  // namespace

char const kSeparator[] = "   --\n";

std::vector<std::string> keptLines(std::vector<OracleLine> const& lines,
                                   OracleContext context) {
  bool const separated = context.after != 0 || context.before != 0;
  std::vector<std::string> kept;
  bool skipped = false;  // lines since the last kept one
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!isKept(lines, i, context)) {
      skipped = true;
      continue;
    }
    if (separated && skipped && !kept.empty()) kept.emplace_back(kSeparator);
    kept.push_back(lines[i].text);
    skipped = false;
  }
  return kept;
}

std::vector<OracleLine> oracleLines(
    std::string const& text,
    std::function<bool(std::string const&)> const& isSelected) {
  std::vector<OracleLine> lines;
  std::string line;
  for (char const c : text) {
    if (c != '\n') {
      line += c;
      continue;
    }
    bool const selected = isSelected(line);
    lines.push_back({line + c, selected});
    line.clear();
  }
  return lines;
}

}  // namespace qor_test
