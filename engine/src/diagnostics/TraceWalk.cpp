#include "diagnostics/TraceWalk.h"

#include <Poco/String.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "diagnostics/LogRecord.h"

namespace QorCliEngine {
namespace {

constexpr unsigned kEntryLevel = 9;
constexpr unsigned kExitLevel = 10;
constexpr std::size_t kIndent = 2;  // blanks for each depth

bool isLevel(LogRecord const& record, unsigned level) {
  return record.kind == LogRecord::Kind::kLevel && record.value == level;
}

// What stands after the mark of an entry (">>") or an exit ("<<").
std::string behind(std::string const& mark, std::string const& text) {
  bool const marked = text.rfind(mark, 0) == 0;
  std::string const rest =
      Poco::trimLeft(marked ? text.substr(mark.size()) : text);
  return rest.empty() ? "" : ' ' + rest;
}

class Walk {
 public:
  void add(std::string const& line) {
    auto const record = LogRecord::read(line);
    if (!record) {
      say(line);
    } else if (isLevel(*record, kEntryLevel)) {
      enter(*record);
    } else if (isLevel(*record, kExitLevel)) {
      leave(*record);
    } else if (record->kind == LogRecord::Kind::kSeverity) {
      say("severity " + std::to_string(record->value) + ": " + record->text);
    } else {
      say(record->text);
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

  void enter(LogRecord const& record) {
    print(">> " + record.function + behind(">>", record.text));
    calls_.push_back({record.file, record.function, text_.size() - 1, true});
  }

  void leave(LogRecord const& record) {
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
