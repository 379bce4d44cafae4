#include "terminal/LineEditor.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cwchar>
#include <new>
#include <string_view>

#include "commands/CommandLine.h"
#include "commands/PathNode.h"
#include "output/Layout.h"
#include "output/Terminal.h"
#include "system/BlockedSignals.h"
#include "system/EngineErrors.h"
#include "system/Interrupts.h"
#include "terminal/CrashGuard.h"
#include "terminal/EditLibrary.h"
#include "terminal/KeySequences.h"

namespace QorCliEngine {
namespace {

constexpr char kPasteModeOn[] = "\033[?2004h";
constexpr char kPasteModeOff[] = "\033[?2004l";
constexpr char kFarewell[] = "\033[?2004l\r\n";
constexpr wchar_t kControlC = 3;
constexpr wchar_t kControlG = 7;
constexpr wchar_t kControlR = 18;
constexpr wchar_t kControlV = 22;
constexpr wchar_t kLastWord[] = L"\033.";
// Keys that no terminal has, pressed by the editor itself.
constexpr wchar_t kInsertWaiting[] = L"\033[waiting";
constexpr wchar_t kCloseQuote[] = L"\033[quote";
constexpr wchar_t kShowSearch[] = L"\033[search";
constexpr wchar_t kAboveControls = 0xA0;  // after those from 0x80 on
constexpr wchar_t kReplacement = 0xFFFD;
constexpr std::size_t kTabStop = 8;  // cells

EditLibrary const& edit() { return EditLibrary::get(); }

// The cells up to the end of `text`, after `from` cells, as the line editor
// shows them: a tab up to the next stop, another control character as two.
std::size_t cellsBehind(std::size_t from, std::string const& text) {
  std::size_t cells = from;
  std::string run;
  for (char c : text) {
    bool const control = static_cast<unsigned char>(c) < ' ' ||
                         c == static_cast<char>(KeySequences::kDelete);
    if (!control) {
      run += c;
      continue;
    }
    cells += Layout::width(run);
    run.clear();
    cells += c == '\t' ? kTabStop - cells % kTabStop : 2;
  }
  return cells + Layout::width(run);
}

std::string wholeText(std::string const& text) { return text; }

std::size_t characters(std::string const& text) {
  std::size_t count = 0;
  for (char c : text) {
    if ((c & 0xC0) != 0x80) ++count;
  }
  return count;
}

void append(std::string& text, wchar_t character) {
  char bytes[MB_LEN_MAX];
  std::mbstate_t state{};
  std::size_t const size = std::wcrtomb(bytes, character, &state);
  if (size <= sizeof bytes) text.append(bytes, size);
}

bool isControl(wchar_t character) {
  return character < L' ' ||
         (character >= KeySequences::kDelete && character < kAboveControls);
}

// What a pasted character becomes in a line: nothing that would end or edit it.
wchar_t pasted(wchar_t character) {
  return character != L'\t' && isControl(character) ? L' ' : character;
}

// Waits for something to read; returns false when a signal comes instead.
bool awaitInput() {
  BlockedSignals const blocked;
  pollfd input{STDIN_FILENO, POLLIN, 0};
  if (!Interrupts::pending()) blocked.wait(&input, 1, -1);
  return input.revents != 0;
}

// Whether there is more to read at once.
bool moreIsTyped() {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return ::poll(&input, 1, 0) > 0;
}

// The lines of a pasted text; those after the first that are empty are not
// worth an Enter. There is at least one.
std::vector<std::string> pastedLines(std::wstring const& text) {
  std::vector<std::string> lines(1);
  for (wchar_t character : text) {
    bool const ends = character == L'\n' || character == L'\r';
    if (!ends) {
      append(lines.back(), pasted(character));
    } else if (lines.size() == 1 || !lines.back().empty()) {
      lines.emplace_back();
    }
  }
  if (lines.size() > 1 && lines.back().empty()) lines.pop_back();
  return lines;
}

}  // namespace

// What the editor library calls. Nothing may be thrown through it.
struct LineEditor::Keys {
  static LineEditor& of(EditLine* editor) {
    void* data = nullptr;
    edit().el_get(editor, EL_CLIENTDATA, &data);
    return *static_cast<LineEditor*>(data);
  }

  template <unsigned char (LineEditor::*Action)()>
  static unsigned char perform(EditLine* editor, int) {
    try {
      return (of(editor).*Action)();
    } catch (...) {
      return CC_ERROR;
    }
  }

  static int read(EditLine* editor, wchar_t* key) {
    return of(editor).readKey(*key);
  }

  static char* prompt(EditLine* editor) {
    return const_cast<char*>(of(editor).prompt().c_str());
  }
};

LineEditor::LineEditor(Session& session, Completer& completer, History& history,
                       std::FILE* screen)
    : session_(session),
      completer_(completer),
      history_(history),
      screen_(screen),
      editor_(edit().el_init("qorcli", stdin, screen, stderr)) {
  if (editor_ == nullptr) throw std::bad_alloc();
  edit().el_set(editor_, EL_CLIENTDATA, this);
  edit().el_set(editor_, EL_PROMPT, &Keys::prompt);
  edit().el_set(editor_, EL_GETCFN, &Keys::read);
  edit().el_set(editor_, EL_HIST, edit().history, history.handle());
  bindKeys();
}

LineEditor::~LineEditor() { edit().el_end(editor_); }

void LineEditor::bindKeys() {
  struct Binding {
    char const* key;
    char const* name;
    // The library keeps these two, and copies and loses narrow ones.
    wchar_t const* wideName;
    wchar_t const* help;
    unsigned char (*function)(EditLine*, int);
  };
  static Binding const bindings[] = {
      {"^I", "qor-complete", L"qor-complete", L"Complete the word",
       &Keys::perform<&LineEditor::complete>},
      {"?", "qor-help", L"qor-help", L"Show what can be typed",
       &Keys::perform<&LineEditor::help>},
      {"\\e[200~", "qor-paste", L"qor-paste", L"Insert pasted text",
       &Keys::perform<&LineEditor::paste>},
      {"\\e[waiting", "qor-insert-waiting", L"qor-insert-waiting",
       L"Insert the next pasted line",
       &Keys::perform<&LineEditor::insertWaiting>},
      {"\\e[quote", "qor-close-quote", L"qor-close-quote",
       L"Close the quote that is open",
       &Keys::perform<&LineEditor::closeQuote>},
      {"^R", "qor-search", L"qor-search", L"Search the history",
       &Keys::perform<&LineEditor::search>},
      {"\\e[search", "qor-show-search", L"qor-show-search",
       L"Show what was found", &Keys::perform<&LineEditor::showSearch>},
      {"^_", "qor-undo", L"qor-undo", L"Take the last change back",
       &Keys::perform<&LineEditor::undo>},
      {"\\e.", "qor-last-word", L"qor-last-word",
       L"Insert the last word of the line before",
       &Keys::perform<&LineEditor::insertLastWord>},
      {"^C", "qor-interrupt", L"qor-interrupt", L"Give the line up",
       &Keys::perform<&LineEditor::interrupt>},
      {"^Z", "qor-suspend", L"qor-suspend", L"Stop until continued",
       &Keys::perform<&LineEditor::suspend>},
  };
  edit().el_set(editor_, EL_EDITOR, "emacs");
  for (Binding const& binding : bindings) {
    edit().el_wset(editor_, EL_ADDFN, binding.wideName, binding.help,
                   binding.function);
    edit().el_set(editor_, EL_BIND, binding.key, binding.name, nullptr);
  }
  edit().el_set(editor_, EL_BIND, "^V", "ed-quoted-insert", nullptr);
  edit().el_set(editor_, EL_BIND, "^S", "ed-unassigned", nullptr);
  edit().el_set(editor_, EL_BIND, "\\e[A", "ed-search-prev-history", nullptr);
  edit().el_set(editor_, EL_BIND, "\\e[B", "ed-search-next-history", nullptr);
  edit().el_set(editor_, EL_BIND, "\\e[3~", "ed-delete-next-char", nullptr);
  // While a line is edited, Ctrl-C is a key: as a signal it would throw away
  // what has been typed ahead, and could come between two system calls.
  edit().el_set(editor_, EL_SETTY, "-d", "-isig", nullptr);
}

bool LineEditor::read(std::string& line) {
  CrashGuard const guard(::fileno(screen_), kFarewell);
  // Before the library would, which is after it shows the prompt: what comes
  // in between would be taken for input of a program.
  edit().el_set(editor_, EL_PREP_TERM, 1);
  std::fputs(kPasteModeOn, screen_);
  if (!waiting_.empty()) ready_ = kInsertWaiting;
  changes_.clear();
  int count = 0;
  char const* const text = edit().el_gets(editor_, &count);
  std::fputs(kPasteModeOff, screen_);
  if (text == nullptr) std::fputs("\n", screen_);
  std::fflush(screen_);
  if (text == nullptr || count <= 0) return false;
  line.assign(text, static_cast<std::size_t>(count));
  if (line.back() == '\n') line.pop_back();
  return true;
}

std::string const& LineEditor::prompt() const {
  return search_ ? searchPrompt_ : session_.prompt();
}

// The line up to the cursor.
std::string LineEditor::typed() const {
  LineInfo const* const info = edit().el_line(editor_);
  return std::string(info->buffer, info->cursor);
}

unsigned char LineEditor::complete() {
  std::string const line = typed();
  try {
    return complete(line, completer_.complete(line));
  } catch (CommandFailure const& failure) {
    return showMessage(failure.what());
  }
}

unsigned char LineEditor::complete(std::string const& line,
                                   std::vector<Candidate> const& candidates) {
  if (candidates.empty()) return showMessage(completer_.noCandidates(line));
  std::string const word = line.substr(CommandLine::typedEnd(line).wordBegin);
  auto const completion = Candidates::complete(word, candidates);
  finishWord(word, completion.word);
  if (!completion.show) return CC_REFRESH;
  bool const paths = completer_.isOwnStage(line);
  return showList(
      Candidates::list(candidates, paths ? PathNode::nameOf : wholeText,
                       Terminal::size().columns),
      candidates.size());
}

unsigned char LineEditor::help() {
  std::string const line = typed();
  if (CommandLine::typedEnd(line).insideQuotes) {
    edit().el_insertstr(editor_, "?");
    return CC_REFRESH;
  }
  try {
    auto const candidates = completer_.help(line);
    if (candidates.empty()) return showMessage(completer_.noCandidates(line));
    return showBelow(
        Candidates::helpList(candidates, Terminal::size().columns));
  } catch (CommandFailure const& failure) {
    return showMessage(failure.what());
  }
}

unsigned char LineEditor::paste() {
  std::wstring text;
  if (!readPasted(text)) return CC_EOF;
  if (!text.empty() && text.back() == kControlC) return interrupt();
  std::vector<std::string> lines = pastedLines(text);
  if (lines.size() > 1) lines.back() += cutTail();
  edit().el_insertstr(editor_, lines.front().c_str());
  waiting_.insert(waiting_.begin(), lines.begin() + 1, lines.end());
  return CC_REFRESH;
}

// Ctrl-C ends a paste whose own end was lost; the text then ends with it.
bool LineEditor::readPasted(std::wstring& text) {
  std::wstring const end = KeySequences::kPasteEnd;
  wchar_t character = 0;
  while (text.size() < end.size() ||
         text.compare(text.size() - end.size(), end.size(), end) != 0) {
    if (!readCharacter(character)) return false;
    text += character;
    if (character == kControlC && !moreIsTyped()) return true;
  }
  text.resize(text.size() - end.size());
  return true;
}

bool LineEditor::quoteIsOpen() const {
  LineInfo const* const info = edit().el_line(editor_);
  std::string const line(info->buffer, info->lastchar);
  return !CommandLine::isSilent(line) &&
         CommandLine::openQuote(line) != std::string::npos;
}

// The line is not run at once: it may be another than was meant.
unsigned char LineEditor::closeQuote() {
  edit().el_insertstr(editor_, (cutTail() + '"').c_str());
  return showMessage("a quote was open and is closed now; Enter runs the line");
}

unsigned char LineEditor::insertWaiting() {
  std::string const line = waiting_.front();
  waiting_.pop_front();
  edit().el_insertstr(editor_, line.c_str());
  return CC_REFRESH;
}

// The library's own search takes cursor keys for text, and does not give the
// line back.
unsigned char LineEditor::search() {
  LineInfo const* const info = edit().el_line(editor_);
  searchedFrom_ = {std::string(info->buffer, info->lastchar), typed().size()};
  search_.emplace(history_.handle());
  searchPrompt_ = "search \"\": ";
  return CC_REFRESH;
}

// Returns what is to be read in place of a key that is pressed in a search.
std::wstring LineEditor::searchKey(std::wstring const& key) {
  if (key.empty()) return key;
  bool const goesOn = searchOn(key);
  bool const given = key == std::wstring{kControlG};
  std::string const line = search_->line();
  bool const none = line.empty() || given;
  found_ = none ? searchedFrom_ : Line{line, search_->position()};
  searchPrompt_ = "search \"" + search_->text() +
                  (search_->failed() ? "\", not found: " : "\": ");
  if (!goesOn) search_.reset();
  return goesOn || given ? kShowSearch : kShowSearch + key;
}

// Returns false for a key that ends the search.
bool LineEditor::searchOn(std::wstring const& key) {
  if (key.size() > 1) return false;
  wchar_t const only = key.front();
  if (only == kControlR) {
    search_->goOlder();
  } else if (only == L'\b' || only == KeySequences::kDelete) {
    search_->undo();
  } else if (!isControl(only)) {
    std::string text;
    append(text, only);
    search_->add(text);
  } else {
    return false;
  }
  return true;
}

unsigned char LineEditor::showSearch() {
  replace(found_.text, characters(found_.text.substr(found_.cursor)));
  if (!search_) noteLine();  // before the key that ended the search works on it
  return CC_REFRESH;
}

// The library has an undo for vi's commands only.
unsigned char LineEditor::undo() {
  UndoList::Line const& line = changes_.undo();
  std::string text;
  for (wchar_t character : line.text) append(text, character);
  replace(text, line.text.size() - line.cursor);
  return CC_REFRESH;
}

// The key's second press goes on to the line before that one.
unsigned char LineEditor::insertLastWord() {
  bool const again = lastWords_.has_value();
  if (!again) lastWords_.emplace(history_.handle());
  std::string const word = lastWords_->next();
  if (word.empty()) return CC_ERROR;
  if (again) {
    edit().el_deletestr(editor_, static_cast<int>(characters(lastWord_)));
  }
  edit().el_insertstr(editor_, word.c_str());
  lastWord_ = word;
  return CC_REFRESH;
}

// The library goes on editing. If it were to return and begin again, what was
// typed in between would be lost.
unsigned char LineEditor::interrupt() {
  LineInfo const* const info = edit().el_line(editor_);
  if (info->cursor == info->lastchar) std::fputs("^C", screen_);
  goBelow();
  clear();
  waiting_.clear();
  changes_.clear();
  return redraw();
}

void LineEditor::clear() {
  edit().el_cursor(editor_, -static_cast<int>(characters(typed())));
  cutTail();
}

void LineEditor::replace(std::string const& text,
                         std::size_t charactersBehind) {
  clear();
  edit().el_insertstr(editor_, text.c_str());
  edit().el_cursor(editor_, -static_cast<int>(charactersBehind));
}

// Takes what is after the cursor out of the line.
std::string LineEditor::cutTail() {
  LineInfo const* const info = edit().el_line(editor_);
  std::string tail(info->cursor, info->lastchar);
  int const count = static_cast<int>(characters(tail));
  edit().el_cursor(editor_, count);
  edit().el_deletestr(editor_, count);
  return tail;
}

unsigned char LineEditor::suspend() {
  goBelow();
  std::fputs(kPasteModeOff, screen_);
  std::fflush(screen_);
  edit().el_set(editor_, EL_PREP_TERM, 0);
  // As the terminal would: with what was started together with the engine.
  ::kill(0, SIGTSTP);
  Interrupts::takeContinued();
  resumeAfterStop();
  return CC_NORM;
}

// In wide characters, as the library has it: this is done for each key.
void LineEditor::noteLine() {
  LineInfoW const* const info = edit().el_wline(editor_);
  changes_.note({std::wstring(info->buffer, info->lastchar),
                 static_cast<std::size_t>(info->cursor - info->buffer)});
}

int LineEditor::readKey(wchar_t& key) {
  while (ready_.empty()) {
    if (!search_) noteLine();
    std::wstring next;
    if (!readWholeKey(next)) return 0;
    if (next != kLastWord) lastWords_.reset();
    ready_ = search_ ? searchKey(next) : next;
  }
  key = ready_.front();
  ready_.erase(0, 1);
  return 1;
}

// Reads a character, or what stands for a key that sends several: empty when it
// means nothing.
bool LineEditor::readWholeKey(std::wstring& key) {
  wchar_t character = 0;
  if (!readCharacter(character)) return false;
  key = character;
  bool const literal = quoting_;
  quoting_ = !literal && character == kControlV;
  bool const ends = character == L'\r' || character == L'\n';
  if (ends && !literal && !search_ && quoteIsOpen()) key = kCloseQuote;
  if (literal || character != KeySequences::kEscape) return true;
  while (KeySequences::isOpen(key)) {
    if (!readCharacter(character)) return false;
    key += character;
  }
  key = KeySequences::meaning(key);
  return true;
}

// The library's own reading would neither notice a signal nor a stop.
bool LineEditor::readCharacter(wchar_t& character) {
  std::mbstate_t state{};
  for (;;) {
    if (Interrupts::leaving()) return false;
    if (Interrupts::takeContinued()) resumeAfterStop();
    if (Interrupts::takeResized()) edit().el_resize(editor_);
    character = kControlC;
    if (Interrupts::take()) return true;
    if (!awaitInput()) continue;
    char byte = 0;
    ssize_t const count = ::read(STDIN_FILENO, &byte, 1);
    if (count == 0 || (count < 0 && errno != EINTR)) return false;
    if (count < 0) continue;
    std::size_t const size = std::mbrtowc(&character, &byte, 1, &state);
    if (size == static_cast<std::size_t>(-2)) continue;
    if (size == static_cast<std::size_t>(-1)) character = kReplacement;
    return true;
  }
}

// `replacement` is often the word and something after it, and the line is then
// only added to.
void LineEditor::finishWord(std::string const& word, std::string replacement) {
  LineInfo const* const info = edit().el_line(editor_);
  bool const blankFollows =
      info->cursor < info->lastchar && *info->cursor == ' ';
  if (blankFollows && replacement.back() == ' ') replacement.pop_back();
  if (replacement.rfind(word, 0) == 0) {
    replacement.erase(0, word.size());
  } else {
    edit().el_deletestr(editor_, static_cast<int>(characters(word)));
  }
  if (!replacement.empty()) edit().el_insertstr(editor_, replacement.c_str());
}

unsigned char LineEditor::showMessage(std::string const& text) {
  return showBelow(
      Layout::inTwoColumns({{"qorcli:", text}}, Terminal::size().columns));
}

// Shows a list of candidates, and the line again below it.
unsigned char LineEditor::showList(std::string const& list, std::size_t count) {
  auto const rows =
      static_cast<std::size_t>(std::count(list.begin(), list.end(), '\n'));
  if (rows < Terminal::size().rows) return showBelow(list);
  goBelow();
  auto const wanted = allAreWanted(count);
  if (!wanted) return CC_EOF;
  std::fputs(*wanted ? list.c_str() : "", screen_);
  return redraw();
}

// None when there will be no answer.
std::optional<bool> LineEditor::allAreWanted(std::size_t count) {
  constexpr std::wstring_view kYes = L"yY ";
  constexpr std::wstring_view kNo = L"nNqQ\003\007\b\177";
  std::fprintf(screen_, "show all %zu? (y/n) ", count);
  std::fflush(screen_);
  std::wstring key;
  while (readWholeKey(key)) {
    bool const yes = key.size() == 1 && kYes.find(key) != kYes.npos;
    bool const no = key.size() == 1 && kNo.find(key) != kNo.npos;
    if (!yes && !no) continue;
    std::fputs("\n", screen_);
    return yes;
  }
  return std::nullopt;
}

// Shows a text, and the line again below it.
unsigned char LineEditor::showBelow(std::string const& list) {
  goBelow();
  std::fputs(list.c_str(), screen_);
  return redraw();
}

// Draws the line where the terminal's cursor is: the library is not told of
// what has been written since it drew the line last.
unsigned char LineEditor::redraw() {
  std::fflush(screen_);
  edit().el_set(editor_, EL_REFRESH);
  return CC_NORM;
}

// Goes to the row after those of the line, of which there may be several.
void LineEditor::goBelow() {
  LineInfo const* const info = edit().el_line(editor_);
  std::size_t const columns = Terminal::size().columns;
  std::size_t const begin = Layout::width(prompt());
  std::size_t const cursor = cellsBehind(begin, typed());
  std::size_t const end =
      cellsBehind(begin, std::string(info->buffer, info->lastchar));
  for (std::size_t row = cursor / columns; row <= end / columns; ++row) {
    std::fputs("\r\n", screen_);
  }
}

void LineEditor::resumeAfterStop() {
  edit().el_set(editor_, EL_PREP_TERM, 0);
  edit().el_set(editor_, EL_PREP_TERM, 1);
  std::fputs(kPasteModeOn, screen_);
  edit().el_set(editor_, EL_REFRESH);
}

}  // namespace QorCliEngine
