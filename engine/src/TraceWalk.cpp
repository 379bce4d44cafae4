#include "TraceWalk.h"

#include <Poco/String.h>

#include <algorithm>
#include <sstream>
#include <vector>

namespace QorCliEngine {
namespace {

constexpr unsigned kEntryLevel = 9;
constexpr unsigned kExitLevel = 10;
constexpr std::size_t kIndent = 2;  // blanks for each depth

struct Record {
  std::string kind;
  unsigned value = 0;
  std::string file;
  std::string function;
  std::string text;  // without white space around it

  bool isEntry() const { return kind == "level" && value == kEntryLevel; }
  bool isExit() const { return kind == "level" && value == kExitLevel; }
};

// Returns whether `line` is a record.
bool read(std::string const& line, Record& record) {
  std::istringstream words(line);
  std::string subsystem;
  std::string place;
  words >> record.kind >> record.value >> subsystem >> place >> record.function;
  std::getline(words, record.text);
  bool const known = record.kind == "level" || record.kind == "severity";
  if (!known || record.function.empty() || record.function.back() != ':') {
    return false;
  }
  record.function.pop_back();
  record.file = place.substr(0, place.rfind(':'));
  Poco::trimInPlace(record.text);
  return true;
}

// What stands behind the mark of an entry (">>") or an exit ("<<").
std::string behind(std::string const& mark, std::string const& text) {
  bool const marked = text.rfind(mark, 0) == 0;
  std::string const rest =
      Poco::trimLeft(marked ? text.substr(mark.size()) : text);
  return rest.empty() ? "" : ' ' + rest;
}

class Walk {
 public:
  void add(std::string const& line) {
    Record record;
    if (!read(line, record)) {
      print(line);
    } else if (record.isEntry()) {
      enter(record);
    } else if (record.isExit()) {
      leave(record);
    } else if (record.kind == "severity") {
      print("severity " + std::to_string(record.value) + ": " + record.text);
    } else {
      print(record.text);
    }
  }

  std::string const& text() const { return text_; }

 private:
  using Function = std::pair<std::string, std::string>;  // file and name

  void enter(Record const& record) {
    print(">> " + record.function + behind(">>", record.text));
    entered_.emplace_back(record.file, record.function);
    justEntered_ = true;
  }

  void leave(Record const& record) {
    Function const function(record.file, record.function);
    auto const entry = std::find(entered_.rbegin(), entered_.rend(), function);
    if (justEntered_ && entry == entered_.rbegin()) {
      text_.pop_back();
      text_ += " <<" + behind("<<", record.text) + '\n';
      entered_.pop_back();
      justEntered_ = false;
      return;
    }
    if (entry != entered_.rend()) {
      entered_.erase(entry.base() - 1, entered_.end());
    }
    print("<< " + record.function + behind("<<", record.text));
  }

  void print(std::string const& line) {
    text_ += std::string(kIndent * entered_.size(), ' ') + line + '\n';
    justEntered_ = false;
  }

  std::string text_;
  std::vector<Function> entered_;
  bool justEntered_ = false;
};

}  // namespace

std::string traceWalk(std::string const& records) {
  Walk walk;
  std::istringstream lines(records);
  std::string line;
  while (std::getline(lines, line)) walk.add(line);
  return walk.text();
}

}  // namespace QorCliEngine
