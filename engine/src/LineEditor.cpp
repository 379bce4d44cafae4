#include "LineEditor.h"

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cwchar>
#include <new>

#include "CommandLine.h"
#include "EngineErrors.h"
#include "Interrupts.h"
#include "Layout.h"
#include "Terminal.h"

namespace QorCliEngine {
namespace {

constexpr char kPasteModeOn[] = "\033[?2004h";
constexpr char kPasteModeOff[] = "\033[?2004l";
constexpr wchar_t kPasteEnd[] = L"\033[201~";
constexpr wchar_t kControlC = 3;
constexpr wchar_t kReplacement = 0xFFFD;
constexpr std::size_t kTabStop = 8;  // cells

// The cells up to the end of `text`, behind `from` cells, as the line editor
// shows them: a tab up to the next stop, another control character as two.
std::size_t cellsBehind(std::size_t from, std::string const& text) {
  std::size_t cells = from;
  std::string run;
  for (char c : text) {
    bool const control = static_cast<unsigned char>(c) < ' ';
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

// What a pasted character becomes in a line: nothing that would end or edit it.
wchar_t pasted(wchar_t character) {
  if (character == L'\t') return character;
  return character < L' ' || character == 0x7F ? L' ' : character;
}

}  // namespace

// What the editor library calls. Nothing may be thrown through it.
struct LineEditor::Keys {
  static LineEditor& of(EditLine* editor) {
    void* data = nullptr;
    el_get(editor, EL_CLIENTDATA, &data);
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
    return const_cast<char*>(of(editor).session_.prompt().c_str());
  }
};

LineEditor::LineEditor(Session& session, Completer& completer, History& history,
                       std::FILE* screen)
    : session_(session),
      completer_(completer),
      screen_(screen),
      editor_(el_init("qorcli", stdin, screen, stderr)) {
  if (editor_ == nullptr) throw std::bad_alloc();
  el_set(editor_, EL_CLIENTDATA, this);
  el_set(editor_, EL_PROMPT, &Keys::prompt);
  el_set(editor_, EL_GETCFN, &Keys::read);
  el_set(editor_, EL_HIST, ::history, history.handle());
  bindKeys();
}

LineEditor::~LineEditor() { el_end(editor_); }

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
      {"^C", "qor-interrupt", L"qor-interrupt", L"Give the line up",
       &Keys::perform<&LineEditor::interrupt>},
      {"^Z", "qor-suspend", L"qor-suspend", L"Stop until continued",
       &Keys::perform<&LineEditor::suspend>},
  };
  el_set(editor_, EL_EDITOR, "emacs");
  for (Binding const& binding : bindings) {
    el_wset(editor_, EL_ADDFN, binding.wideName, binding.help,
            binding.function);
    el_set(editor_, EL_BIND, binding.key, binding.name, nullptr);
  }
  el_set(editor_, EL_BIND, "^V", "ed-quoted-insert", nullptr);
  el_set(editor_, EL_BIND, "^R", "em-inc-search-prev", nullptr);
  // While a line is edited, Ctrl-C is a key: as a signal it would throw away
  // what has been typed ahead, and could come between two system calls.
  el_set(editor_, EL_SETTY, "-d", "-isig", nullptr);
}

bool LineEditor::read(std::string& line) {
  // Before the library would, which is after it shows the prompt: what comes
  // in between would be taken for input of a program.
  el_set(editor_, EL_PREP_TERM, 1);
  std::fputs(kPasteModeOn, screen_);
  int count = 0;
  char const* const text = el_gets(editor_, &count);
  std::fputs(kPasteModeOff, screen_);
  if (text == nullptr) std::fputs("\n", screen_);
  std::fflush(screen_);
  if (text == nullptr || count <= 0) return false;
  line.assign(text, static_cast<std::size_t>(count));
  if (line.back() == '\n') line.pop_back();
  return true;
}

// The line up to the cursor.
std::string LineEditor::typed() const {
  LineInfo const* const info = el_line(editor_);
  return std::string(info->buffer, info->cursor);
}

unsigned char LineEditor::complete() {
  std::string const line = typed();
  std::string const word = line.substr(CommandLine::typedEnd(line).wordBegin);
  auto const candidates =
      Candidates::merged(completer_.ask(QOR_CLI_ACTION_COMPLETE, line));
  if (candidates.empty()) return CC_ERROR;
  auto const completion = Candidates::complete(word, candidates);
  finishWord(word, completion.word);
  if (!completion.show) return CC_REFRESH;
  return showBelow(Candidates::list(candidates, Terminal::size().columns));
}

unsigned char LineEditor::help() {
  std::string const line = typed();
  if (CommandLine::typedEnd(line).insideQuotes) {
    el_insertstr(editor_, "?");
    return CC_REFRESH;
  }
  auto const candidates = completer_.help(line);
  if (candidates.empty()) return CC_ERROR;
  return showBelow(Candidates::helpList(candidates, Terminal::size().columns));
}

unsigned char LineEditor::paste() {
  std::wstring const end = kPasteEnd;
  std::wstring text;
  wchar_t key = 0;
  while (text.size() < end.size() ||
         text.compare(text.size() - end.size(), end.size(), end) != 0) {
    if (readKey(key) != 1) return CC_EOF;
    text += key;
  }
  text.resize(text.size() - end.size());
  while (!text.empty() && (text.back() == L'\n' || text.back() == L'\r')) {
    text.pop_back();
  }
  std::string bytes;
  for (wchar_t character : text) append(bytes, pasted(character));
  el_insertstr(editor_, bytes.c_str());
  return CC_REFRESH;
}

// The library goes on editing. If it were to return and begin again, what was
// typed in between would be lost.
unsigned char LineEditor::interrupt() {
  LineInfo const* const info = el_line(editor_);
  if (info->cursor == info->lastchar) std::fputs("^C", screen_);
  goBelow();
  std::string const line(info->buffer, info->lastchar);
  el_cursor(editor_, static_cast<int>(characters(line)));
  el_deletestr(editor_, static_cast<int>(characters(line)));
  return redraw();
}

unsigned char LineEditor::suspend() {
  goBelow();
  std::fputs(kPasteModeOff, screen_);
  std::fflush(screen_);
  el_set(editor_, EL_PREP_TERM, 0);
  // As the terminal would: with what was started together with the engine.
  ::kill(0, SIGTSTP);
  Interrupts::takeContinued();
  resumeAfterStop();
  return CC_NORM;
}

// The library's own reading would neither notice a signal nor a stop.
int LineEditor::readKey(wchar_t& key) {
  std::mbstate_t state{};
  for (;;) {
    if (Interrupts::leaving()) return 0;
    if (Interrupts::takeContinued()) resumeAfterStop();
    if (Interrupts::takeResized()) el_resize(editor_);
    key = kControlC;
    if (Interrupts::take()) return 1;
    char byte = 0;
    ssize_t const count = ::read(STDIN_FILENO, &byte, 1);
    if (count == 0 || (count < 0 && errno != EINTR)) return 0;
    if (count < 0) continue;
    std::size_t const size = std::mbrtowc(&key, &byte, 1, &state);
    if (size == static_cast<std::size_t>(-2)) continue;
    if (size == static_cast<std::size_t>(-1)) key = kReplacement;
    return 1;
  }
}

// `replacement` is often the word and something behind it, and the line is then
// only added to.
void LineEditor::finishWord(std::string const& word, std::string replacement) {
  LineInfo const* const info = el_line(editor_);
  bool const blankFollows =
      info->cursor < info->lastchar && *info->cursor == ' ';
  if (blankFollows && replacement.back() == ' ') replacement.pop_back();
  if (replacement.rfind(word, 0) == 0) {
    replacement.erase(0, word.size());
  } else {
    el_deletestr(editor_, static_cast<int>(characters(word)));
  }
  if (!replacement.empty()) el_insertstr(editor_, replacement.c_str());
}

// Shows a list, and the line again below it.
unsigned char LineEditor::showBelow(std::string const& list) {
  goBelow();
  std::fputs(list.c_str(), screen_);
  return redraw();
}

// Draws the line where the terminal's cursor is: the library is not told of
// what has been written since it drew the line last.
unsigned char LineEditor::redraw() {
  std::fflush(screen_);
  el_set(editor_, EL_REFRESH);
  return CC_NORM;
}

// Goes to the row behind those of the line, of which there may be several.
void LineEditor::goBelow() {
  LineInfo const* const info = el_line(editor_);
  std::size_t const columns = Terminal::size().columns;
  std::size_t const prompt = Layout::width(session_.prompt());
  std::size_t const cursor = cellsBehind(prompt, typed());
  std::size_t const end =
      cellsBehind(prompt, std::string(info->buffer, info->lastchar));
  for (std::size_t row = cursor / columns; row <= end / columns; ++row) {
    std::fputs("\r\n", screen_);
  }
}

void LineEditor::resumeAfterStop() {
  el_set(editor_, EL_PREP_TERM, 0);
  el_set(editor_, EL_PREP_TERM, 1);
  std::fputs(kPasteModeOn, screen_);
  el_set(editor_, EL_REFRESH);
}

}  // namespace QorCliEngine
