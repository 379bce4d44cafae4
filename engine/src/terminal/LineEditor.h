#ifndef QOR_CLI_ENGINE_LINE_EDITOR_H
#define QOR_CLI_ENGINE_LINE_EDITOR_H

#include <histedit.h>

#include <cstdio>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "calls/Session.h"
#include "completion/Completer.h"
#include "terminal/History.h"
#include "terminal/HistorySearch.h"
#include "terminal/LastWords.h"
#include "terminal/UndoList.h"

namespace QorCliEngine {

// Lets the operator type a command line at the terminal, with completion on Tab
// and help on "?". Inside quoted text, after Ctrl-V and in pasted text, "?" is
// a character like any other, and so is a tab in pasted text. Of several pasted
// lines, each waits for its Enter. One thread.
class LineEditor {
 public:
  // No argument is owned. `screen` is the terminal that is written to.
  LineEditor(Session& session, Completer& completer, History& history,
             std::FILE* screen);
  ~LineEditor();
  LineEditor(LineEditor const&) = delete;
  LineEditor& operator=(LineEditor const&) = delete;

  // Shows the session's prompt and stores what is typed, without its line feed,
  // in `line`; Ctrl-C begins anew. The terminal is left as it was. Returns
  // false when there will be no more lines.
  bool read(std::string& line);

 private:
  struct Keys;

  void bindKeys();
  std::string const& prompt() const;
  std::string typed() const;
  unsigned char complete();
  unsigned char complete(std::string const& line,
                         std::vector<Candidate> const& candidates);
  unsigned char help();
  unsigned char paste();
  bool quoteIsOpen() const;
  unsigned char closeQuote();
  unsigned char insertWaiting();
  unsigned char search();
  unsigned char showSearch();
  unsigned char undo();
  unsigned char insertLastWord();
  unsigned char interrupt();
  unsigned char suspend();
  void noteLine();
  int readKey(wchar_t& key);
  bool readWholeKey(std::wstring& key);
  bool readCharacter(wchar_t& character);
  bool readPasted(std::wstring& text);
  std::wstring searchKey(std::wstring const& key);
  bool searchOn(std::wstring const& key);
  std::string cutTail();
  void clear();
  void replace(std::string const& text, std::size_t charactersBehind);
  void finishWord(std::string const& word, std::string replacement);
  unsigned char showMessage(std::string const& text);
  unsigned char showList(std::string const& list, std::size_t count);
  std::optional<bool> allAreWanted(std::size_t count);
  unsigned char showBelow(std::string const& list);
  unsigned char redraw();
  void goBelow();
  void resumeAfterStop();

  // A line, and the bytes of it that are before the cursor.
  struct Line {
    std::string text;
    std::size_t cursor = 0;
  };

  Session& session_;
  Completer& completer_;
  History& history_;
  std::FILE* screen_;
  EditLine* editor_;
  std::wstring ready_;               // to be read before what is typed
  bool quoting_ = false;             // the next character is no key
  std::deque<std::string> waiting_;  // pasted lines
  std::optional<HistorySearch> search_;
  std::string searchPrompt_;
  Line searchedFrom_;
  Line found_;
  UndoList changes_;
  std::optional<LastWords> lastWords_;  // while their key is pressed again
  std::string lastWord_;                // of those, inserted
};

}  // namespace QorCliEngine

#endif
