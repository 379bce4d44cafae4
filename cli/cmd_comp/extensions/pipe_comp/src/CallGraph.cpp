#include "CallGraph.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

#include "PatternScan.h"

namespace QorCliPipe {
namespace {

// A call, the name of a group included, is no longer than this.
constexpr std::size_t kLongestMark = 160;  // bytes

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isSign(char c) { return c == '+' || c == '-'; }

// What a call names: "R", a number with or without a sign, or a name. Empty
// where `rest` does not begin with a call.
std::string_view calledBy(std::string_view rest) {
  if (rest.substr(0, 3) == "\\g<" || rest.substr(0, 3) == "\\g'") {
    char const close = rest[2] == '<' ? '>' : '\'';
    return rest.substr(3, rest.find(close, 3) - 3);
  }
  if (rest.substr(0, 2) != "(?") return {};
  std::string_view const called = rest.substr(2, rest.find(')') - 2);
  if (called.substr(0, 1) == "&") return called.substr(1);
  if (called.substr(0, 2) == "P>") return called.substr(2);
  if (called == "R") return called;
  std::size_t const digits = !called.empty() && isSign(called[0]) ? 1 : 0;
  bool const isNumber = digits < called.size() && isDigit(called[digits]);
  return isNumber ? called : std::string_view{};
}

// The name that a group which begins with `rest` gives itself.
std::optional<std::string_view> nameOf(std::string_view rest) {
  std::size_t const begin = rest.substr(0, 3) == "(?P" ? 4 : 3;
  if (rest.substr(0, 2) != "(?" || rest.size() <= begin) return std::nullopt;
  char const open = rest[begin - 1];
  if (open != '<' && open != '\'') return std::nullopt;
  if (rest[begin] == '=' || rest[begin] == '!') return std::nullopt;
  return rest.substr(begin, rest.find(open == '<' ? '>' : '\'', begin) - begin);
}

// Whether a group that begins with `rest` is an option that keeps plain groups
// from having numbers, as some versions of the library have it.
bool mayTakeNumbers(std::string_view rest) {
  if (rest.substr(0, 2) != "(?") return false;
  std::string_view const options = rest.substr(2, rest.find_first_of(":)") - 2);
  return options.find('n') != std::string_view::npos &&
         options.find_first_not_of("imsxnrUJ^-") == std::string_view::npos;
}

class Reader {
 public:
  // Appends to the two, which are empty.
  Reader(std::string_view pattern, std::vector<CallGraph::Extent>& groups,
         std::vector<CallGraph::Call>& calls)
      : pattern_(pattern), groups_(groups), calls_(calls) {}

  // Returns the depth.
  std::size_t read() {
    groups_.push_back({0, pattern_.size()});
    PatternScan scan(pattern_);
    for (; !scan.atEnd() && !isAtStrayEnd(scan); scan.advance()) {
      visit(scan.position());
    }
    isSure_ = isSure_ && scan.isSure();
    bool const isRefused = scan.isRefused() || (isSure_ && !open_.empty());
    if (isRefused) marked_.clear();
    for (Marked const& call : marked_) {
      std::optional<std::size_t> const group = groupOf(call);
      if (group) calls_.push_back({call.position, *group});
    }
    return isSure_ ? depth_ : opened_;
  }

  bool isReadable() const { return isReadable_; }

 private:
  static constexpr std::size_t kNoGroup = 0;

  // A call as it stands in the text.
  struct Marked {
    std::size_t position;
    std::string_view called;
    std::size_t numbersBefore;
  };

  // A group, capturing or not, whose end is yet to be read.
  struct Open {
    std::size_t group;  // index into groups_, or kNoGroup
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
    switch (pattern_[i]) {
      case '\\':
        mark(i);
        break;
      case '(':
        mark(i);
        open(i, pattern_.substr(i, kLongestMark));
        break;
      case '|':
        countAnew();
        break;
      case ')':
        if (!open_.empty()) close(i);
        break;
      default:
        break;
    }
  }

  void mark(std::size_t i) {
    std::string_view const rest = pattern_.substr(i, kLongestMark);
    std::string_view const called = calledBy(rest);
    if (called.empty()) return;
    marked_.push_back({i, called, numbers_});
    // The rest of a call that is cut off may say anything.
    bool const isCutOff =
        rest.size() == kLongestMark && called.end() == rest.end();
    isReadable_ = isReadable_ && !isCutOff;
  }

  void open(std::size_t i, std::string_view rest) {
    std::optional<std::string_view> const name = nameOf(rest);
    bool const isCondition = i == lastOpen_ + 2 && pattern_[i - 1] == '?';
    bool const isPlain =
        !isCondition && rest.substr(1, 1) != "?" && rest.substr(1, 1) != "*";
    lastOpen_ = i;
    isSure_ = isSure_ && !mayTakeNumbers(rest);
    std::size_t const group = isPlain || name ? addGroup(i) : kNoGroup;
    if (name) addName(*name, group);
    open_.push_back({group, rest.substr(0, 3) == "(?|", numbers_, numbers_});
    ++opened_;
    depth_ = std::max(depth_, open_.size());
  }

  std::size_t addGroup(std::size_t i) {
    groups_.push_back({i, pattern_.size()});
    // A number that several groups have means the first.
    if (++numbers_ == byNumber_.size()) byNumber_.push_back(groups_.size() - 1);
    return groups_.size() - 1;
  }

  // Which group a name means that several have is left open.
  void addName(std::string_view name, std::size_t group) {
    auto const [found, isNew] = names_.emplace(name, group);
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
    if (last.group != kNoGroup) groups_[last.group].end = i + 1;
    numbers_ = std::max(numbers_, last.mostNumbers);
    open_.pop_back();
  }

  // The group that the call leads to; nothing where there is none, which the
  // library refuses.
  std::optional<std::size_t> groupOf(Marked const& call) {
    if (!isSure_) return anyGroup(call);
    if (call.called == "R") return 0;
    auto const named = names_.find(call.called);
    if (named == names_.end()) return numbered(call);
    return named->second != kNoGroup ? named->second : anyGroup(call);
  }

  std::size_t anyGroup(Marked const& call) {
    auto const [found, isNew] = unsure_.emplace(call.called, groups_.size());
    if (isNew) groups_.push_back({0, pattern_.size()});
    return found->second;
  }

  std::optional<std::size_t> numbered(Marked const& call) const {
    std::string_view text = call.called;
    char const sign = isSign(text[0]) ? text[0] : ' ';
    if (sign != ' ') text.remove_prefix(1);
    std::size_t number = 0;
    auto const error =
        std::from_chars(text.data(), text.data() + text.size(), number).ec;
    if (error != std::errc() || number > pattern_.size()) return std::nullopt;
    if (sign == '+') number = call.numbersBefore + number;
    if (sign == '-') number = call.numbersBefore + 1 - number;
    if (number >= byNumber_.size()) return std::nullopt;
    return byNumber_[number];
  }

  std::string_view pattern_;
  std::vector<CallGraph::Extent>& groups_;
  std::vector<CallGraph::Call>& calls_;
  bool isSure_ = true;
  bool isReadable_ = true;
  std::vector<Open> open_;
  std::size_t depth_ = 0;  // the largest size of open_
  std::size_t opened_ = 0;
  std::size_t lastOpen_ = std::string_view::npos - 2;
  std::vector<Marked> marked_;
  std::size_t numbers_ = 0;               // the number of the last group
  std::vector<std::size_t> byNumber_{0};  // indices into groups_
  std::map<std::string_view, std::size_t> names_;   // likewise, or kNoGroup
  std::map<std::string_view, std::size_t> unsure_;  // by the text of the call
};

}  // namespace

CallGraph::CallGraph(std::string_view pattern) {
  Reader reader(pattern, groups_, calls_);
  depth_ = reader.read();
  isReadable_ = reader.isReadable();
}

}  // namespace QorCliPipe
