#include "Session.h"

#include <cstddef>
#include <type_traits>

namespace qor_test {
namespace {

Session& sessionOf(ContextRecord* record) {
  static_assert(offsetof(Session, record) == 0);
  static_assert(std::is_standard_layout_v<Session>);
  return *reinterpret_cast<Session*>(record);
}

std::int32_t noteOther(ContextRecord* record, char const* name) {
  sessionOf(record).otherCalls.emplace_back(name);
  return 0;
}

auto asTuple(OutputCall const& call) {
  return std::tie(call.index, call.count, call.actionId, call.text);
}

auto asTuple(CandidateCall const& call) {
  return std::tie(call.index, call.count, call.actionId, call.token,
                  call.completion, call.help, call.sortOrder, call.sortKey);
}

extern "C" {

std::int32_t setCursor(ContextRecord* record, char const*) {
  return noteOther(record, "setCursor");
}

std::int32_t setPrompt(ContextRecord* record, char const*) {
  return noteOther(record, "setPrompt");
}

std::int32_t setOutput(ContextRecord* record, unsigned index, unsigned count,
                       unsigned actionId, char const* text) {
  sessionOf(record).outputs.push_back({index, count, actionId, text});
  return 0;
}

std::int32_t setAutocompleteResult(ContextRecord* record, unsigned, unsigned,
                                   unsigned, unsigned, char const*,
                                   char const*) {
  return noteOther(record, "setAutocompleteResult");
}

std::int32_t sessionShutdown(ContextRecord* record, unsigned) {
  return noteOther(record, "sessionShutdown");
}

std::int32_t setSortableAutocompleteResult(ContextRecord* record,
                                           unsigned index, unsigned count,
                                           unsigned actionId, unsigned token,
                                           char const* completion,
                                           char const* help, unsigned sortOrder,
                                           char const* sortKey) {
  sessionOf(record).candidates.push_back(
      {index, count, actionId, token, completion, help, sortOrder, sortKey});
  return 0;
}

std::int32_t setLock(ContextRecord* record, unsigned) {
  return noteOther(record, "setLock");
}

}  // extern "C"

}  // namespace

bool operator==(OutputCall const& a, OutputCall const& b) {
  return asTuple(a) == asTuple(b);
}

std::ostream& operator<<(std::ostream& out, OutputCall const& call) {
  return out << "output " << call.index << '/' << call.count << " of action "
             << call.actionId << ": \"" << call.text << '"';
}

bool operator==(CandidateCall const& a, CandidateCall const& b) {
  return asTuple(a) == asTuple(b);
}

std::ostream& operator<<(std::ostream& out, CandidateCall const& call) {
  return out << "candidate " << call.index << '/' << call.count << " of action "
             << call.actionId << ": \"" << call.completion << "\" token "
             << call.token << " help \"" << call.help << "\" sorted "
             << call.sortOrder << " \"" << call.sortKey << '"';
}

Session::Session() : record() {
  record.mode = 1;
  record.setCursor = setCursor;
  record.setPrompt = setPrompt;
  record.setOutput = setOutput;
  record.setAutocompleteResult = setAutocompleteResult;
  record.sessionShutdown = sessionShutdown;
  record.setSortableAutocompleteResult = setSortableAutocompleteResult;
  record.setLock = setLock;
}

void Session::clear() {
  outputs.clear();
  candidates.clear();
  otherCalls.clear();
}

std::vector<std::string> textsOf(std::vector<OutputCall> const& calls) {
  std::vector<std::string> texts;
  for (OutputCall const& call : calls) texts.push_back(call.text);
  return texts;
}

}  // namespace qor_test
