#include "CallGraph.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>
#include <optional>
#include <set>

#include "PatternGroups.h"
#include "PatternScan.h"

namespace QorCliPipe {
namespace {

// A call, the name of a group included, is no longer than this.
constexpr std::size_t kLongestMark = 160;  // bytes

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isSign(char c) { return c == '+' || c == '-'; }

// The library refuses patterns long before.
constexpr std::size_t kMostOpen = 16384;

// What a call or reference that is an escape names: \1, or \g or \k with a
// number or name that may stand in brackets or quotes.
std::string_view calledByEscape(std::string_view rest) {
  constexpr std::string_view opening = "<'{";
  constexpr std::string_view closing = ">'}";
  if (rest.size() < 2) return {};
  bool const isLetter = rest[1] == 'g' || rest[1] == 'k';
  rest.remove_prefix(isLetter ? 2 : 1);
  std::size_t const kind = opening.find_first_of(rest.substr(0, 1));
  if (isLetter && kind != std::string_view::npos) {
    return rest.substr(1, rest.find(closing[kind], 1) - 1);
  }
  bool const hasSign = isLetter && !rest.empty() && isSign(rest[0]);
  std::size_t digits = hasSign ? 1 : 0;
  while (digits < rest.size() && isDigit(rest[digits])) ++digits;
  return rest.substr(0, digits);
}

// What a call or reference names: a number with or without a sign, or a name.
// Empty where `rest` does not begin with one.
std::string_view calledBy(std::string_view rest) {
  if (rest.substr(0, 1) == "\\") return calledByEscape(rest);
  if (rest.substr(0, 2) != "(?") return {};
  std::string_view const called = rest.substr(2, rest.find(')') - 2);
  if (called.substr(0, 1) == "&") return called.substr(1);
  if (called.substr(0, 2) == "P>" || called.substr(0, 2) == "P=") {
    return called.substr(2);
  }
  if (called == "R") return "0";
  std::size_t const digits = !called.empty() && isSign(called[0]) ? 1 : 0;
  bool const isNumber = digits < called.size() && isDigit(called[digits]);
  return isNumber ? called : std::string_view{};
}

// The number that a call or reference means behind so many groups; nothing for
// a name. One that is too large is that of no group.
std::optional<std::size_t> numberOf(std::string_view called,
                                    std::size_t numbersBefore) {
  char const sign = !called.empty() && isSign(called[0]) ? called[0] : ' ';
  if (sign != ' ') called.remove_prefix(1);
  std::size_t number = 0;
  auto const [end, error] =
      std::from_chars(called.data(), called.data() + called.size(), number);
  if (end == called.data()) return std::nullopt;
  if (error != std::errc()) return std::numeric_limits<std::size_t>::max();
  if (sign == '+') return numbersBefore + number;
  return sign == '-' ? numbersBefore + 1 - number : number;
}

// Whether a call or reference that begins with `rest` is a reference.
bool isReference(std::string_view rest) {
  return rest.substr(0, 4) == "(?P=" ||
         (rest[0] == '\\' && rest.substr(0, 3) != "\\g<" &&
          rest.substr(0, 3) != "\\g'");
}

// The name that a group which begins with `rest` gives itself.
std::optional<std::string_view> nameOf(std::string_view rest) {
  std::size_t const begin = rest.substr(0, 3) == "(?P" ? 4 : 3;
  if (rest.substr(0, 2) != "(?" || rest.size() <= begin) return std::nullopt;
  char const open = rest[begin - 1];
  if (open != '<' && open != '\'') return std::nullopt;
  constexpr std::string_view looksBehind = "=!*";
  if (looksBehind.find(rest[begin]) != std::string_view::npos) {
    return std::nullopt;
  }
  return rest.substr(begin, rest.find(open == '<' ? '>' : '\'', begin) - begin);
}

// Whether a group that begins with `rest` is an option that keeps plain groups
// from having numbers, or begins with numbers in parentheses, as some versions
// of the library have it.
bool mayShiftNumbers(std::string_view rest) {
  constexpr std::string_view options =
      "^-abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  if (rest.substr(0, 4) == "(*sc") return true;
  if (rest.substr(0, 2) != "(?") return false;
  std::string_view const set = rest.substr(2, rest.find_first_of(":)") - 2);
  return set.find('n') != std::string_view::npos &&
         set.find_first_not_of(options) == std::string_view::npos;
}

class Reader {
 public:
  explicit Reader(std::string_view pattern)
      : pattern_(pattern), parts_(pattern) {}

  void read() {
    PatternScan scan(pattern_);
    while (!scan.atEnd() && !isAtStrayEnd(scan) && open_.size() <= kMostOpen) {
      isSure_ = scan.isSure();
      visit(scan.position());
      scan.advance();
    }
    parts_.finish();
    isSure_ = scan.isSure();
    if (scan.isRefused() || (isSure_ && !open_.empty())) marked_.clear();
    isReadable_ = open_.size() <= kMostOpen &&
                  (marked_.empty() ||
                   (hasShortCalls_ && (isSure_ || !parts_.hasCopies())));
  }

  bool isReadable() const { return isReadable_; }

  // Those that are not there are no references, or are refused.
  std::vector<std::size_t> referred() const {
    bool const isKnown = isSure_ && areNumbersSure_;
    std::vector<std::size_t> result;
    for (std::size_t const number : referredNumbers_) {
      bool const isThere = number > 0 && number < byNumber_.size();
      if (isThere || !isKnown)
        result.push_back(isKnown ? byNumber_[number] : 0);
    }
    for (std::string_view const name : referredNames_) {
      auto const named = names_.find(name);
      bool const isThere = named != names_.end();
      if (isThere || !isKnown) result.push_back(isKnown ? named->second : 0);
    }
    return result;
  }

  std::size_t choices() const {
    return parts_.hasCopies() ? parts_.parts().front().length : choices_;
  }

  std::size_t lookups() const { return lookups_; }

  std::vector<CallGraph::Group> groups() const {
    std::vector<CallGraph::Group> result{wholePattern()};
    for (std::size_t const part : groups_) {
      PatternGroups::Part const& group = parts_.parts()[part];
      std::size_t const around = group.level + group.nested;
      result.push_back({group.begin, group.end, group.length, group.allCopies,
                        around, group.deepest - around});
    }
    result.resize(result.size() + unsure_.size(), wholePattern());
    return result;
  }

  std::vector<CallGraph::Call> calls() {
    std::vector<CallGraph::Call> result;
    for (Marked const& call : marked_) {
      PatternGroups::Part const& part = parts_.parts()[call.part];
      std::optional<std::size_t> const group = groupOf(call);
      lookups_ += names_.size();
      if (!group) continue;
      bool const isAhead = *group > groups_.size() ||
                           (*group > 0 && groups_[*group - 1] > call.part);
      if (isAhead) lookups_ += pattern_.size();
      result.push_back({part.begin, *group, isSure_ ? part.allCopies : 1,
                        isSure_ ? part.level + 1 + part.nested : levels()});
    }
    return result;
  }

 private:
  static constexpr std::size_t kNoGroup = 0;

  // A call as it stands in the text.
  struct Marked {
    std::size_t part;
    std::string_view called;
    std::size_t numbersBefore;
  };

  // A group, capturing or not, whose end is yet to be read.
  struct Open {
    std::size_t part;
    // Of a group such as (?|a|b), each alternative of which counts from the
    // same number on.
    bool countsAnew;
    std::size_t numbersBefore;
    std::size_t mostNumbers;
  };

  // Whether a group ends that never began. The library may not read on, and not
  // refuse the pattern before it has followed the calls up to here.
  bool isAtStrayEnd(PatternScan const& scan) const {
    return scan.isSure() && open_.empty() && pattern_[scan.position()] == ')';
  }

  void visit(std::size_t i) {
    parts_.visit(i);
    switch (pattern_[i]) {
      case '\\':
        readEscape(i);
        break;
      case '(':
        open(i);
        break;
      case '|':
        ++choices_;
        countAnew();
        break;
      case '?':
      case '*':
      case '+':
      case '{':
        ++choices_;
        break;
      case ')':
        if (!open_.empty()) close(i);
        break;
      default:
        break;
    }
  }

  // A call such as \g<1>, or a reference such as \1, if it is one.
  void readEscape(std::size_t i) {
    std::string_view const rest = pattern_.substr(i, kLongestMark);
    std::string_view const called = calledBy(rest);
    if (called.empty()) return;
    if (isReference(rest)) return refer(called);
    std::size_t const part = parts_.add(around(), i);
    auto const end = static_cast<std::size_t>(called.end() - pattern_.begin());
    parts_.end(part, std::min(end + 1, pattern_.size()));
    mark(part, called);
  }

  void refer(std::string_view called) {
    std::optional<std::size_t> const number = numberOf(called, numbers_);
    if (number) {
      referredNumbers_.insert(*number);
    } else {
      referredNames_.insert(called);
    }
  }

  // The rest of a call that is cut off may say anything.
  void mark(std::size_t part, std::string_view called) {
    marked_.push_back({part, called, numbers_});
    hasShortCalls_ = hasShortCalls_ && called.size() < kLongestMark - 4;
  }

  // The part that is around the next character.
  std::size_t around() const { return open_.empty() ? 0 : open_.back().part; }

  void open(std::size_t i) {
    std::string_view const rest = pattern_.substr(i, kLongestMark);
    std::optional<std::string_view> const name = nameOf(rest);
    std::string_view const called = calledBy(rest);
    bool const isCondition =
        isSure_ && i == lastOpen_ + 2 && pattern_[i - 1] == '?';
    bool const isPlain =
        !isCondition && rest.substr(1, 1) != "?" && rest.substr(1, 1) != "*";
    lastOpen_ = i;
    areNumbersSure_ = areNumbersSure_ && !mayShiftNumbers(rest);
    std::size_t const part = parts_.add(around(), i);
    if (isPlain || name) addGroup(part);
    if (name) addName(*name);
    if (!called.empty() && isReference(rest)) refer(called);
    if (!called.empty() && !isReference(rest)) mark(part, called);
    open_.push_back({part, rest.substr(0, 3) == "(?|", numbers_, numbers_});
  }

  void addGroup(std::size_t part) {
    groups_.push_back(part);
    // A number that several groups have means the first.
    if (++numbers_ == byNumber_.size()) byNumber_.push_back(groups_.size());
  }

  // Names the last group. Which one a name means that several have is left
  // open.
  void addName(std::string_view name) {
    auto const [found, isNew] = names_.emplace(name, groups_.size());
    if (!isNew) found->second = kNoGroup;
  }

  void countAnew() {
    if (open_.empty() || !open_.back().countsAnew) return;
    Open& around = open_.back();
    around.mostNumbers = std::max(around.mostNumbers, numbers_);
    numbers_ = around.numbersBefore;
  }

  void close(std::size_t i) {
    Open const& last = open_.back();
    parts_.end(last.part, i + 1);
    numbers_ = std::max(numbers_, last.mostNumbers);
    open_.pop_back();
  }

  // How deeply groups are nested in the whole pattern: all in all others, when
  // it is not sure where they end.
  std::size_t levels() const {
    if (isSure_) return parts_.parts().front().deepest;
    std::size_t result = 0;
    for (PatternGroups::Part const& part : parts_.parts()) {
      result += 1 + part.nested;
    }
    return result;
  }

  CallGraph::Group wholePattern() const {
    return {0, pattern_.size(), parts_.parts().front().length, 1, 0, levels()};
  }

  // The group that the call leads to; nothing where there is none, which the
  // library refuses.
  std::optional<std::size_t> groupOf(Marked const& call) {
    if (!isSure_ || !areNumbersSure_) return anyGroup(call);
    auto const named = names_.find(call.called);
    if (named == names_.end()) return numbered(call);
    return named->second != kNoGroup ? named->second : anyGroup(call);
  }

  std::size_t anyGroup(Marked const& call) {
    std::size_t const next = groups_.size() + 1 + unsure_.size();
    return unsure_.emplace(call.called, next).first->second;
  }

  std::optional<std::size_t> numbered(Marked const& call) const {
    std::optional<std::size_t> const number =
        numberOf(call.called, call.numbersBefore);
    if (!number || *number >= byNumber_.size()) return std::nullopt;
    return byNumber_[*number];
  }

  std::string_view pattern_;
  PatternGroups parts_;
  bool isSure_ = true;  // what is a group, and where it ends
  bool areNumbersSure_ = true;
  bool isReadable_ = true;
  bool hasShortCalls_ = true;
  std::vector<Open> open_;
  std::size_t lastOpen_ = std::string_view::npos - 2;
  std::vector<std::size_t> groups_;  // the capturing ones: parts
  std::vector<Marked> marked_;
  std::set<std::size_t> referredNumbers_;
  std::set<std::string_view> referredNames_;
  std::size_t choices_ = 0;
  std::size_t lookups_ = 0;
  std::size_t numbers_ = 0;  // the number of the last group
  // The whole pattern is group 0, the first of groups_ is 1.
  std::vector<std::size_t> byNumber_{0};
  std::map<std::string_view, std::size_t> names_;   // or kNoGroup
  std::map<std::string_view, std::size_t> unsure_;  // by the text of the call
};

}  // namespace

CallGraph::CallGraph(std::string_view pattern) {
  Reader reader(pattern);
  reader.read();
  calls_ = reader.calls();
  groups_ = reader.groups();
  referred_ = reader.referred();
  choices_ = reader.choices();
  lookups_ = reader.lookups();
  isReadable_ = reader.isReadable();
}

}  // namespace QorCliPipe
