#include "PatternReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "Pcre2Expression.h"

namespace QorCliMatching {
namespace {

// Searching for more literals costs more than it saves.
constexpr std::size_t kMaxTexts = 8;

// Longer literals are truncated.
constexpr std::size_t kMaxText = 64;  // bytes

// For the parentheses of a group.
constexpr double kStepsPerGroup = 3;

constexpr unsigned kNoLimit = UINT32_MAX;

// Classes that RE2 lacks or defines differently: its \s lacks the vertical tab.
struct Class {
  char escape;
  char const* members;  // in the syntax of a bracketed class
  char const* complement;
};

constexpr Class kClasses[] = {
    {'s', " \\t-\\r", "\\x00-\\x08\\x0E-\\x1F!-\\xFF"},
    {'h', " \\t\\xA0", "\\x00-\\x08\\n-\\x1F!-\\x9F\\xA1-\\xFF"},
};

bool isOneOf(char c, std::string_view set) {
  return set.find(c) != std::string_view::npos;
}

bool isAlnum(char c) {
  char const lower = static_cast<char>(c | 0x20);
  return (c >= '0' && c <= '9') || (lower >= 'a' && lower <= 'z');
}

// ---- Items

struct Item {
  enum class Kind { kCharacter, kSet, kAnchor, kBar, kOpen, kClose, kUnknown };

  bool isOnce() const { return min == 1 && max == 1; }

  Kind kind;
  std::string_view body;
  std::string_view quantifier;
  unsigned min = 1;
  unsigned max = 1;
};

using Kind = Item::Kind;
using Items = std::vector<Item>;

bool isLookbehind(Item const& item) {
  return item.body == "(?<=" || item.body == "(?<!";
}

bool isLookaround(Item const& item) {
  return item.body == "(?=" || item.body == "(?!" || isLookbehind(item);
}

bool isLineAnchor(Item const& item) {
  return item.kind == Kind::kAnchor && !isOneOf(item.body.back(), "bB");
}

bool isLoop(Item const& item) { return item.max == kNoLimit; }

bool isChoice(Item const& item) {
  return item.kind == Kind::kBar ||
         (item.kind == Kind::kClose && item.min != item.max);
}

Kind kindOfGroup(std::string_view open) {
  bool const isNamed = open.back() == '>' && (open.substr(0, 3) == "(?<" ||
                                              open.substr(0, 4) == "(?P<");
  for (char const* known : {"(", "(?:", "(?=", "(?!", "(?<=", "(?<!", "(?>"}) {
    if (open == known) return Kind::kOpen;
  }
  return isNamed ? Kind::kOpen : Kind::kUnknown;
}

// Parses an item, but not its quantifier.
Item withoutQuantifier(std::string_view text) {
  auto const first = [text](std::size_t count) {
    return text.substr(0, count);
  };
  switch (text[0]) {
    case '(':
      return {kindOfGroup(text), text, {}};
    case ')':
      return {Kind::kClose, first(1), {}};
    case '|':
      return {Kind::kBar, first(1), {}};
    case '^':
    case '$':
      return {Kind::kAnchor, first(1), {}};
    case '.':
      return {Kind::kSet, first(1), {}};
    case '[':
      return {Kind::kSet, first(text.rfind(']') + 1), {}};
    case '\n':
      return {Kind::kUnknown, text, {}};
    case '\\':
      break;
    default:
      return {Kind::kCharacter, first(1), {}};
  }
  if (text[1] == '\n') return {Kind::kUnknown, text, {}};
  if (!isAlnum(text[1])) return {Kind::kCharacter, first(2), {}};
  bool const isAnchor = isOneOf(text[1], "bBAzZ");
  // \x{41} is a character, not a quantifier.
  if (text.substr(1, 2) == "x{") return {Kind::kUnknown, text, {}};
  std::size_t size = 2;
  while (text[1] == 'x' && size < text.size() &&
         isOneOf(text[size], "0123456789ABCDEFabcdef")) {
    ++size;
  }
  return {isAnchor ? Kind::kAnchor : Kind::kSet, first(size), {}};
}

// Consumes a number. RE2 reads one with a leading zero literally.
bool takeNumber(std::string_view& text, unsigned& number) {
  if (text.size() > 1 && text[0] == '0' && isAlnum(text[1])) return false;
  char const* const end = text.data() + text.size();
  auto const read = std::from_chars(text.data(), end, number);
  text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
  return read.ec == std::errc();
}

// Parses "*", "+", "?", "{3}", "{3,}" or "{3,5}", optionally lazy or
// possessive. Returns false for anything else.
bool readQuantifier(Item& item) {
  std::string_view text = item.quantifier;
  if (text.empty()) return true;
  item.min = text[0] == '+' ? 1 : 0;
  item.max = text[0] == '?' ? 1 : kNoLimit;
  bool const isCount = text[0] == '{';
  if (!isCount && !isOneOf(text[0], "*+?")) return false;
  text.remove_prefix(1);
  if (isCount) {
    if (!takeNumber(text, item.min)) return false;
    item.max = item.min;
    if (!text.empty() && text[0] == ',') {
      text.remove_prefix(1);
      item.max = kNoLimit;
      if (text[0] != '}' && !takeNumber(text, item.max)) return false;
    }
    text.remove_prefix(1);
  }
  return text.empty() || text == "?" || text == "+";
}

Item itemOf(std::string_view text) {
  Item item = withoutQuantifier(text);
  item.quantifier = text.substr(item.body.size());
  bool const mayRepeat = item.kind != Kind::kAnchor && item.kind != Kind::kBar;
  if (!readQuantifier(item) || !(mayRepeat || item.quantifier.empty())) {
    item.kind = Kind::kUnknown;
  }
  return item;
}

// ---- Required texts

// Most single characters occur in nearly every line, so that searching for one
// costs more than it saves.
bool isWorthLookingFor(std::string const& text) {
  return text.size() > 1 || !(isAlnum(text[0]) || isOneOf(text[0], " :-"));
}

// Adjacent characters outside groups form a run; any other item ends it. The
// longest run of an alternative is its required text.
class TextReader {
 public:
  void read(Item const& item) {
    if (item.kind == Kind::kOpen) ++depth_;
    if (item.kind == Kind::kClose) --depth_;
    if (depth_ == 0 && item.kind == Kind::kBar) {
      endAlternative();
    } else if (depth_ == 0 && item.kind == Kind::kCharacter) {
      if (item.min != 0) run_ += item.body.back();
      if (!item.isOnce()) endRun();
    } else {
      endRun();
    }
  }

  void finish(PatternFacts& facts) {
    endAlternative();
    if (texts_.size() > kMaxTexts) return;
    for (std::string& text : texts_) {
      if (text.empty() || !(isPlain_ || isWorthLookingFor(text))) return;
      if (text.size() <= kMaxText) continue;
      text.resize(kMaxText);
      isPlain_ = false;
    }
    facts.anyOf = std::move(texts_);
    facts.sufficient = isPlain_;
  }

 private:
  void endRun() {
    isPlain_ = false;
    if (run_.size() > longest_.size()) longest_ = run_;
    run_.clear();
  }

  void endAlternative() {
    bool const wasPlain = isPlain_;
    endRun();
    isPlain_ = wasPlain;
    texts_.push_back(std::exchange(longest_, {}));
  }

  std::size_t depth_ = 0;
  bool isPlain_ = true;  // only runs so far
  std::string run_;
  std::string longest_;
  std::vector<std::string> texts_;
};

// Removes the parentheses of a pattern that is a single group.
void unwrap(Items& items) {
  if (items.size() < 3 || items[0].kind != Kind::kOpen ||
      isLookaround(items[0]) || items.back().kind != Kind::kClose ||
      !items.back().isOnce()) {
    return;
  }
  std::size_t depth = 0;
  bool const isOneGroup =
      std::all_of(items.begin(), items.end() - 1, [&](Item const& item) {
        if (item.kind == Kind::kOpen) ++depth;
        if (item.kind == Kind::kClose) --depth;
        return depth != 0;
      });
  if (!isOneGroup) return;
  items.pop_back();
  items.erase(items.begin());
}

// ---- Backtracking
//
// The ways of a sequence multiply, those of alternatives add up, and those of a
// repeated group multiply with themselves.

void append(Backtracking& all, Backtracking const& part) {
  all.ways *= part.ways;
  all.loops = std::min(all.loops + part.loops, Backtracking::kUnbounded);
  all.length += part.length;
  all.passes += part.passes;
}

struct Group {
  Backtracking done{0, 0, 0, 0};  // the previous alternatives
  Backtracking current;

  // An empty one counts as unbounded, since JIT code may miss it.
  Backtracking const& endAlternative() {
    if (current.length == 0) current.loops = Backtracking::kUnbounded;
    done.ways += current.ways;
    done.loops = std::max(done.loops, current.loops);
    done.length = std::max(done.length, current.length);
    done.passes = std::max(done.passes, current.passes);
    current = {};
    return done;
  }
};

Backtracking repeated(Backtracking const& once, Item const& item) {
  if (item.max == kNoLimit) return {1, Backtracking::kUnbounded, 1, 0};
  double const count = item.max;
  return {std::pow(once.ways, count) * (count - item.min + 1),
          once.loops * item.max, once.length * count, once.passes * count};
}

// Whether only the longest run of `item` can lead to a match: nothing follows,
// or a character that the item cannot match.
bool isDeterministic(Item const& item, Item const* next, bool ignoreCase) {
  if (next == nullptr) return true;
  return next->kind == Kind::kCharacter && next->min != 0 &&
         !matchesCharacter(item.body, next->body.back(), ignoreCase);
}

Backtracking repeatedCharacter(Item const& item, Item const* next,
                               bool ignoreCase) {
  if (item.isOnce()) return {1, 0, 1, 0};
  bool const isFixedEnd = isDeterministic(item, next, ignoreCase);
  if (item.max == kNoLimit) {
    return {1, isFixedEnd ? 0U : 1U, item.min + 1.0, isFixedEnd ? 1.0 : 0.0};
  }
  return {isFixedEnd ? 1.0 : item.max - item.min + 1.0, 0, 1.0 + item.max, 0};
}

Backtracking backtracking(Items const& items, bool ignoreCase) {
  std::vector<Group> groups(1);
  for (std::size_t i = 0; i < items.size(); ++i) {
    Item const& item = items[i];
    if (item.kind == Kind::kOpen) {
      groups.emplace_back();
    } else if (item.kind == Kind::kBar) {
      groups.back().endAlternative();
    } else if (item.kind == Kind::kClose) {
      Backtracking group = groups.back().endAlternative();
      group.length += kStepsPerGroup;
      groups.pop_back();
      append(groups.back().current, repeated(group, item));
    } else {
      Item const* const next = i + 1 < items.size() ? &items[i + 1] : nullptr;
      append(groups.back().current, repeatedCharacter(item, next, ignoreCase));
    }
  }
  return groups.back().endAlternative();
}

// ---- RE2's syntax
//
// Each function appends to `out` and returns null, or why RE2 is unsuitable.

char const* writeEscape(char c, bool inClass, std::string& out) {
  for (Class const& known : kClasses) {
    if ((c | 0x20) != known.escape) continue;
    if (!inClass) out += '[';
    out += c == known.escape ? known.members : known.complement;
    if (!inClass) out += ']';
    return nullptr;
  }
  out += '\\';
  out += c == 'Z' ? 'z' : c;
  if (c >= '1' && c <= '9') return "a back reference";
  bool const isCommon = !isAlnum(c) || isOneOf(c, "dDwWbBAzZtrfax");
  return isCommon ? nullptr : "an uncommon escape";
}

bool isClassName(std::string_view text) {
  std::string_view const name = text.substr(0, text.find(":]"));
  return name.size() != text.size() &&
         std::all_of(name.begin(), name.end(),
                     [](char c) { return isAlnum(c) || c == '^'; });
}

char const* writeBody(std::string_view body, std::string& out) {
  char const* reason = nullptr;
  for (std::size_t i = 0; i < body.size(); ++i) {
    if (body[i] == '\\') {
      char const* const why = writeEscape(body[++i], body[0] == '[', out);
      if (why != nullptr) reason = why;
    } else {
      out += body[i];
      if (i == 0 || body.substr(i, 2) != "[:") continue;
      if (!isClassName(body.substr(i + 2))) reason = "an uncommon class";
    }
  }
  return reason;
}

char const* write(Item const& item, std::string& out) {
  if (item.body == "(?>") return "an atomic group";
  if (item.kind == Kind::kOpen) {
    out += "(?:";
    return nullptr;
  }
  char const* const reason = writeBody(item.body, out);
  out += item.quantifier;
  if (reason != nullptr) return reason;
  if (item.max == 0) return "a quantifier of zero";
  bool const isPossessive =
      item.quantifier.size() > 1 && item.quantifier.back() == '+';
  return isPossessive ? "a possessive quantifier" : nullptr;
}

// With counted quantifiers expanded, as RE2 does before compiling.
double sizeOf(Items const& items) {
  std::vector<double> groups(1);
  for (Item const& item : items) {
    double size = 1;
    if (item.kind == Kind::kOpen) {
      groups.push_back(0);
      continue;
    }
    if (item.kind == Kind::kClose) {
      size = groups.back();
      groups.pop_back();
    }
    groups.back() += size * std::max(isLoop(item) ? item.min : item.max, 1U);
  }
  return groups.back();
}

// RE2 folds the case of non-ASCII bytes, and misses alternatives that share a
// prefix of them.
bool isAscii(Item const& item) {
  return item.body.find("\\x") == std::string_view::npos &&
         std::all_of(item.body.begin(), item.body.end(), [](char c) {
           return static_cast<unsigned char>(c) < 0x80;
         });
}

void findStrategies(Items const& items, PatternFacts& facts) {
  std::string regular;
  for (Item const& item : items) {
    char const* const reason = write(item, regular);
    if (reason == nullptr) continue;
    facts.reason = reason;
    return;
  }
  facts.reason = "";
  auto const has = [&items](auto is) {
    return std::any_of(items.begin(), items.end(), is);
  };
  bool const varies = has([](Item const& item) {
    return item.kind == Kind::kBar || item.min != item.max;
  });
  facts.jitAgrees = !(varies && has(isLookbehind));
  if (has(isLookaround)) {
    facts.reason = "a lookaround";
    return;
  }
  facts.isFixed = !varies && !has(isLineAnchor);
  facts.hasLoopAndChoice = has(isLoop) && has(isChoice);
  facts.backtracking = backtracking(items, facts.ignoreCase);
  if (facts.backtracking.loops == Backtracking::kUnbounded) {
    facts.reason = "unbounded backtracking";
  }
  bool const foldsOrChooses = facts.ignoreCase || has([](Item const& item) {
                                return item.kind == Kind::kBar;
                              });
  if (foldsOrChooses && !std::all_of(items.begin(), items.end(), isAscii)) {
    facts.reason = "non-ASCII bytes";
    return;
  }
  facts.regular = std::move(regular);
  facts.size = sizeOf(items);
}

}  // namespace

PatternFacts readPattern(std::vector<std::string_view> const& texts,
                         bool ignoreCase) {
  PatternFacts facts;
  bool const hasOption = !texts.empty() && texts[0] == "(?i)";
  facts.ignoreCase = ignoreCase || hasOption;
  Items items;
  for (std::size_t i = hasOption ? 1 : 0; i < texts.size(); ++i) {
    items.push_back(itemOf(texts[i]));
    if (items.back().kind == Kind::kUnknown) return facts;
  }
  if (items.empty()) return facts;
  findStrategies(items, facts);
  unwrap(items);
  TextReader reader;
  for (Item const& item : items) reader.read(item);
  reader.finish(facts);
  return facts;
}

}  // namespace QorCliMatching
