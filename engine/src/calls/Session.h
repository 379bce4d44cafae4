#ifndef QOR_CLI_ENGINE_SESSION_H
#define QOR_CLI_ENGINE_SESSION_H

#include <cstdint>
#include <string>

#include "QorCliApiContext.h"

namespace QorCliEngine {

// The operator's session: what every call's context record says, and what the
// calls may change of it. One thread.
class Session {
 public:
  Session(std::uint32_t mode, std::string cursor, std::string loginName);
  // Another session that components cannot tell from this one.
  Session(Session const& other);
  Session& operator=(Session const&) = delete;

  // A record for one call, without functions. Its texts belong to the session
  // and are valid until the one in question is set.
  QorCliApiContext_5 const& record() const { return record_; }

  // Takes over the members of a call's record that components may write.
  void adopt(QorCliApiContext_5 const& callRecord);

  // Null is read as an empty text.
  void setCursor(char const* cursor);
  void setPrompt(char const* prompt);
  void setLock(unsigned lock);

  // Ends the session after the command line that is running.
  void shutDown() { shutDown_ = true; }
  bool isShutDown() const { return shutDown_; }

  std::string const& prompt() const { return prompt_; }

  // A number that names one command to its component: never the same twice.
  unsigned nextActionId() { return ++lastActionId_; }

 private:
  std::string cursor_;
  std::string loginName_;
  std::string prompt_;
  QorCliApiContext_5 record_{};
  bool shutDown_ = false;
  unsigned lastActionId_ = 0;
};

}  // namespace QorCliEngine

#endif
