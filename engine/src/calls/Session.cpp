#include "calls/Session.h"

#include <utility>

namespace QorCliEngine {
namespace {

constexpr char kDefaultPrompt[] = "qorcli> ";
constexpr std::uint32_t kSessionId = 1;

void assign(std::string& text, char const*& member, char const* value) {
  text = value == nullptr ? "" : value;
  member = text.c_str();
}

}  // namespace

Session::Session(std::uint32_t mode, std::string cursor, std::string loginName)
    : loginName_(std::move(loginName)) {
  record_.sessionId = kSessionId;
  record_.mode = QorCliModeEnum_1T{mode};
  record_.loginName = loginName_.c_str();
  setCursor(cursor.c_str());
  setPrompt(kDefaultPrompt);
}

Session::Session(Session const& other)
    : Session(other.record_.mode, other.cursor_, other.loginName_) {
  adopt(other.record_);
  setPrompt(other.prompt_.c_str());
  setLock(other.record_.lock);
}

void Session::adopt(QorCliApiContext_5 const& callRecord) {
  record_.transactionHandle = callRecord.transactionHandle;
  record_.mode = callRecord.mode;
  record_.exclusiveUse = callRecord.exclusiveUse;
  record_.lastStatus = callRecord.lastStatus;
}

void Session::setCursor(char const* cursor) {
  assign(cursor_, record_.cursor, cursor);
}

void Session::setPrompt(char const* prompt) {
  assign(prompt_, record_.prompt, prompt);
}

void Session::setLock(unsigned lock) { record_.lock = QorCliLockEnum_1T{lock}; }

}  // namespace QorCliEngine
