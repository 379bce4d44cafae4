#include "RecordingContext.h"

#include <sstream>

namespace QorUnit {
namespace {

template <class... Arguments>
QorReturnT note(QorCliApiContext_5* record, char const* name,
                Arguments... arguments) {
  auto& recording = static_cast<RecordingRecord&>(*record);
  std::ostringstream call;
  call << name;
  ((call << ' ' << arguments), ...);
  recording.calls.push_back(call.str());
  return recording.result;
}

}  // namespace

RecordingRecord::RecordingRecord() : QorCliApiContext_5{} {
  mode = QorCliModeEnum_1T{2};
  setCursor = [](QorCliApiContext_5* r, char const* text) {
    return note(r, "setCursor", text);
  };
  setPrompt = [](QorCliApiContext_5* r, char const* text) {
    return note(r, "setPrompt", text);
  };
  setOutput = [](QorCliApiContext_5* r, unsigned index, unsigned count,
                 unsigned id, char const* text) {
    return note(r, "setOutput", index, count, id, text);
  };
  setAutocompleteResult = [](QorCliApiContext_5* r, unsigned index,
                             unsigned count, unsigned id, unsigned token,
                             char const* completion, char const* help) {
    return note(r, "setAutocompleteResult", index, count, id, token, completion,
                help);
  };
  sessionShutdown = [](QorCliApiContext_5* r, unsigned reason) {
    return note(r, "sessionShutdown", reason);
  };
  setSortableAutocompleteResult =
      [](QorCliApiContext_5* r, unsigned index, unsigned count, unsigned id,
         unsigned token, char const* completion, char const* help,
         unsigned order, char const* key) {
        return note(r, "setSortableAutocompleteResult", index, count, id, token,
                    completion, help, order, key);
      };
  setLock = [](QorCliApiContext_5* r, unsigned lockState) {
    return note(r, "setLock", lockState);
  };
}

}  // namespace QorUnit
