#include "CallGraph.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

#include "PatternText.h"

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

// Whether a group that begins with `rest` may change how groups are numbered.
bool mayRenumber(std::string_view rest) {
  if (rest.substr(0, 2) != "(?") return false;
  std::string_view const kind = rest.substr(2, rest.find_first_of(":)") - 2);
  return kind.substr(0, 1) == "|" ||
         (kind.find_first_not_of("imsxnUJ^-") == std::string_view::npos &&
          kind.find('n') != std::string_view::npos);
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
    visitOutsideClasses(pattern_, [this](std::size_t i, bool sure) {
      isSure_ = isSure_ && sure;
      visit(i);
    });
    for (Marked const& call : marked_) {
      calls_.push_back({call.position, groupOf(call)});
    }
    return isSure_ ? depth_ : opened_;
  }

  bool isReadable() const { return isReadable_; }

 private:
  static constexpr std::size_t kNoCapture = 0;

  // A call as it stands in the text.
  struct Marked {
    std::size_t position;
    std::string_view called;
    std::size_t groupsBefore;
  };

  void visit(std::size_t i) {
    std::string_view const rest = pattern_.substr(i, kLongestMark);
    std::string_view const called = calledBy(rest);
    if (!called.empty()) marked_.push_back({i, called, groups_.size() - 1});
    // The rest of a call that is cut off may say anything.
    bool const isCutOff = rest.size() == kLongestMark && !called.empty() &&
                          called.end() == rest.end();
    isReadable_ = isReadable_ && !isCutOff;
    if (rest[0] == '(') open(i, rest);
    if (rest[0] == ')' && !open_.empty()) close(i);
  }

  void open(std::size_t i, std::string_view rest) {
    std::optional<std::string_view> const name = nameOf(rest);
    bool const isCondition = i == lastOpen_ + 2 && pattern_[i - 1] == '?';
    bool const isPlain =
        !isCondition && rest.substr(1, 1) != "?" && rest.substr(1, 1) != "*";
    bool const captures = isPlain || name;
    lastOpen_ = i;
    isSure_ = isSure_ && !mayRenumber(rest);
    open_.push_back(captures ? groups_.size() : kNoCapture);
    ++opened_;
    depth_ = std::max(depth_, open_.size());
    if (captures) groups_.push_back({i, pattern_.size()});
    if (name) isSure_ = names_.emplace(*name, open_.back()).second && isSure_;
  }

  void close(std::size_t i) {
    if (open_.back() != kNoCapture) groups_[open_.back()].end = i + 1;
    open_.pop_back();
  }

  std::size_t groupOf(Marked const& call) {
    std::optional<std::size_t> const group =
        isSure_ ? meantBy(call) : std::nullopt;
    if (group && *group < groups_.size()) return *group;
    auto const [found, isNew] = unsure_.emplace(call.called, groups_.size());
    if (isNew) groups_.push_back({0, pattern_.size()});
    return found->second;
  }

  std::optional<std::size_t> meantBy(Marked const& call) const {
    std::string_view text = call.called;
    if (text == "R") return 0;
    auto const named = names_.find(text);
    if (named != names_.end()) return named->second;
    char const sign = isSign(text[0]) ? text[0] : ' ';
    if (sign != ' ') text.remove_prefix(1);
    std::size_t number = 0;
    auto const error =
        std::from_chars(text.data(), text.data() + text.size(), number).ec;
    if (error != std::errc() || number > pattern_.size()) return std::nullopt;
    if (sign == '+') return call.groupsBefore + number;
    if (sign == ' ') return number;
    if (number > call.groupsBefore) return std::nullopt;
    return call.groupsBefore + 1 - number;
  }

  std::string_view pattern_;
  std::vector<CallGraph::Extent>& groups_;
  std::vector<CallGraph::Call>& calls_;
  bool isSure_ = true;
  bool isReadable_ = true;
  std::vector<std::size_t> open_;  // indices into groups_, or kNoCapture
  std::size_t depth_ = 0;          // the largest size of open_
  std::size_t opened_ = 0;
  std::size_t lastOpen_ = std::string_view::npos - 2;
  std::vector<Marked> marked_;
  std::map<std::string_view, std::size_t> names_;
  std::map<std::string_view, std::size_t> unsure_;  // by the text of the call
};

}  // namespace

CallGraph::CallGraph(std::string_view pattern) {
  Reader reader(pattern, groups_, calls_);
  depth_ = reader.read();
  isReadable_ = reader.isReadable();
}

}  // namespace QorCliPipe
