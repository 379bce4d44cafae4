#ifndef QOR_CLI_ENGINE_LINE_EDITOR_H
#define QOR_CLI_ENGINE_LINE_EDITOR_H

#include <histedit.h>

#include <cstdio>
#include <string>

#include "Completer.h"
#include "History.h"
#include "Session.h"

namespace QorCliEngine {

// Lets the operator type a command line at the terminal, with completion on Tab
// and help on "?". Inside quoted text, after Ctrl-V and in pasted text, "?" is
// a character like any other, and so is a tab in pasted text; line feeds in
// pasted text become blanks. One thread.
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
  std::string typed() const;
  unsigned char complete();
  unsigned char help();
  unsigned char paste();
  unsigned char interrupt();
  unsigned char suspend();
  int readKey(wchar_t& key);
  void finishWord(std::string const& word, std::string replacement);
  unsigned char showBelow(std::string const& list);
  unsigned char redraw();
  void goBelow();
  void resumeAfterStop();

  Session& session_;
  Completer& completer_;
  std::FILE* screen_;
  EditLine* editor_;
};

}  // namespace QorCliEngine

#endif
