#include "diagnostics/TraceWalk.h"

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

// Returns whether `line` is a record. The name of a function may hold blanks,
// as in "operator bool", but no colon.
bool read(std::string const& line, Record& record) {
  std::istringstream words(line);
  std::string subsystem;
  std::string place;
  words >> record.kind >> record.value >> subsystem >> place;
  std::getline(words, record.function, ':');
  bool const known = record.kind == "level" || record.kind == "severity";
  if (!known || words.eof() || !words) return false;
  std::getline(words, record.text);
  Poco::trimInPlace(record.function);
  Poco::trimInPlace(record.text);
  record.file = place.substr(0, place.rfind(':'));
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
      say(line);
    } else if (record.isEntry()) {
      enter(record);
    } else if (record.isExit()) {
      leave(record);
    } else if (record.kind == "severity") {
      say("severity " + std::to_string(record.value) + ": " + record.text);
    } else {
      say(record.text);
    }
  }

  std::string const& text() const { return text_; }

 private:
  struct Call {
    std::string file;
    std::string function;
    std::size_t lineEnd;  // of its entry's line, in text_, before the line feed
    bool silent;          // nothing has been said since
  };

  void enter(Record const& record) {
    print(">> " + record.function + behind(">>", record.text));
    calls_.push_back({record.file, record.function, text_.size() - 1, true});
  }

  void leave(Record const& record) {
    std::string const result = behind("<<", record.text);
    auto const call =
        std::find_if(calls_.rbegin(), calls_.rend(), [&](Call const& each) {
          return each.file == record.file && each.function == record.function;
        });
    if (call == calls_.rbegin() && call != calls_.rend() && call->silent) {
      text_.resize(call->lineEnd);
      text_ += " <<" + result + '\n';
      calls_.pop_back();
      return;
    }
    if (call != calls_.rend()) calls_.erase(call.base() - 1, calls_.end());
    say("<< " + record.function + result);
  }

  void say(std::string const& line) {
    print(line);
    for (Call& call : calls_) call.silent = false;
  }

  void print(std::string const& line) {
    text_ += std::string(kIndent * calls_.size(), ' ') + line + '\n';
  }

  std::string text_;
  std::vector<Call> calls_;  // entered and not left
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
