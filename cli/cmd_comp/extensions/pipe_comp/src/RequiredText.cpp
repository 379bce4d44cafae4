#include "RequiredText.h"

#include <algorithm>
#include <cctype>
#include <utility>

// A pattern is read from left to right as a sequence of elements. Characters
// that must follow each other directly make up a run; every other element ends
// the run. The longest run of a branch is its required text. Whatever is not
// understood for certain makes the reader give up: then there is no required
// text, and lines are simply matched.

namespace QorCliPipe {
namespace {

// Looking for many texts at once costs more than it saves.
constexpr std::size_t kMostTexts = 8;

// The beginning of a longer one will do. Looking for a text takes a time that
// may grow with its length, too.
constexpr std::size_t kLongestText = 64;  // bytes

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isOneOf(char c, std::string_view set) {
  return set.find(c) != std::string_view::npos;
}

// A single character of most kinds occurs in nearly every line, so that looking
// for it costs more than it saves.
bool isWorthLookingFor(std::string_view text) {
  if (text.size() != 1) return !text.empty();
  char const c = text.front();
  return std::isalnum(static_cast<unsigned char>(c)) == 0 && !isOneOf(c, " :-");
}

class PatternReader {
 public:
  explicit PatternReader(std::string_view pattern) : rest_(pattern) {}

  RequiredText read() {
    while (!rest_.empty() && understood_) readElement();
    finishBranch();
    if (!understood_) return {};
    return std::move(result_);
  }

 private:
  enum class Repeated { kOnce, kAtLeastOnce, kPerhapsNever };

  void giveUp() { understood_ = false; }

  char take() {
    char const c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  bool nextIs(char c) const { return !rest_.empty() && rest_.front() == c; }

  void readElement() {
    char const c = take();
    if (c == '\\') {
      readEscape();
    } else if (c == '|') {
      finishBranch();
    } else if (c == '(') {
      skipGroup();
      readOther();
    } else if (c == '[') {
      skipClass();
      readOther();
    } else if (isOneOf(c, ".^$")) {
      readOther();
    } else if (isOneOf(c, ")*+?{\n")) {
      giveUp();
    } else {
      readCharacter(c);
    }
  }

  void readEscape() {
    if (rest_.empty()) return giveUp();
    char const c = take();
    if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '\n') {
      readCharacter(c);
    } else if (isOneOf(c, "dDwWsShHvVbBAzZ")) {
      readOther();
    } else {
      giveUp();
    }
  }

  void readCharacter(char c) {
    switch (readRepetition()) {
      case Repeated::kOnce:
        run_.push_back(c);
        break;
      case Repeated::kAtLeastOnce:
        run_.push_back(c);
        endRun();
        break;
      case Repeated::kPerhapsNever:
        endRun();
        break;
    }
  }

  void readOther() {
    readRepetition();
    endRun();
  }

  Repeated readRepetition() {
    Repeated repeated = Repeated::kOnce;
    if (nextIs('*') || nextIs('?')) {
      take();
      repeated = Repeated::kPerhapsNever;
    } else if (nextIs('+')) {
      take();
      repeated = Repeated::kAtLeastOnce;
    } else if (nextIs('{')) {
      take();
      repeated = readCount();
    } else {
      return repeated;
    }
    if (nextIs('?') || nextIs('+')) take();
    return repeated;
  }

  // The rest of "{3}", "{3,}" or "{3,5}"; anything else may be a count in one
  // version of the library and plain text in another.
  Repeated readCount() {
    bool zero = true;
    bool digits = false;
    for (; !rest_.empty() && isDigit(rest_.front()); digits = true) {
      if (take() != '0') zero = false;
    }
    if (nextIs(',')) take();
    while (!rest_.empty() && isDigit(rest_.front())) take();
    if (!digits || !nextIs('}')) {
      giveUp();
      return Repeated::kPerhapsNever;
    }
    take();
    return zero ? Repeated::kPerhapsNever : Repeated::kAtLeastOnce;
  }

  // The rest of a character class without escapes and brackets in it.
  void skipClass() {
    if (nextIs('^')) take();
    if (nextIs(']')) take();
    std::size_t const end = rest_.find_first_of("[]\\");
    if (end == std::string_view::npos || rest_[end] != ']') return giveUp();
    rest_.remove_prefix(end + 1);
  }

  // The rest of a group, with the groups inside it.
  void skipGroup() {
    checkGroupKind();
    for (std::size_t depth = 1; depth > 0 && understood_;) {
      if (rest_.empty()) return giveUp();
      char const c = take();
      if (c == ')') --depth;
      if (c == '[') skipClass();
      if (c == '(') {
        ++depth;
        checkGroupKind();
      }
      if (c == '\\') {
        if (rest_.empty() || isOneOf(rest_.front(), "QEcNKGg")) return giveUp();
        take();
      }
    }
  }

  // Gives up on what changes the meaning of the rest, or jumps.
  void checkGroupKind() {
    if (nextIs('*')) return giveUp();
    if (!nextIs('?')) return;
    std::string_view const kind = rest_.substr(1, 2);
    bool const plain = !kind.empty() && isOneOf(kind.front(), ":=!>");
    bool const behind = kind == "<=" || kind == "<!";
    if (!plain && !behind) giveUp();
  }

  void endRun() {
    plain_ = false;
    if (run_.size() > longest_.size()) longest_ = run_;
    run_.clear();
  }

  void finishBranch() {
    bool const plain = plain_ && !run_.empty();
    endRun();
    if (!(plain || isWorthLookingFor(longest_)) ||
        result_.anyOf.size() == kMostTexts) {
      giveUp();
    }
    bool const whole = longest_.size() <= kLongestText;
    if (!whole) longest_.resize(kLongestText);
    result_.sufficient =
        plain && whole && (result_.anyOf.empty() || result_.sufficient);
    result_.anyOf.push_back(std::exchange(longest_, {}));
    plain_ = true;
  }

  std::string_view rest_;
  bool understood_ = true;
  bool plain_ = true;  // the branch is nothing but a run, so far
  std::string run_;
  std::string longest_;  // the longest run of the branch, so far
  RequiredText result_;
};

// What stands between the parentheses of a pattern that is one group, if it is;
// with a stray parenthesis in it, which makes the reader give up, if it is not.
std::string_view insideOfGroup(std::string_view pattern) {
  bool const wrapped = pattern.size() >= 2 && pattern.front() == '(' &&
                       pattern.back() == ')' && !isOneOf(pattern[1], "?*");
  bool const unnumbered = pattern.substr(0, 3) == "(?:";
  if (!wrapped && !(unnumbered && pattern.back() == ')')) return {};
  pattern.remove_suffix(1);
  pattern.remove_prefix(unnumbered ? 3 : 1);
  return pattern;
}

}  // namespace

RequiredText requiredText(std::string_view pattern) {
  RequiredText const inside = PatternReader(insideOfGroup(pattern)).read();
  return inside.anyOf.empty() ? PatternReader(pattern).read() : inside;
}

}  // namespace QorCliPipe
