#ifndef QOR_CLI_ENGINE_OUTPUT_CONTEXT_H
#define QOR_CLI_ENGINE_OUTPUT_CONTEXT_H

#include <string>

#include "calls/CallContext.h"

namespace QorCliEngine {

// Appends what a component prints to a text: whole lines, each with a line
// feed. Empty texts add nothing.
class OutputContext : public CallContext {
 public:
  // `sink` is not owned and must outlive the context.
  OutputContext(Session& session, std::string& sink)
      : CallContext(session), sink_(sink) {}

 protected:
  void acceptOutput(char const* text) override {
    if (*text == '\0') return;
    sink_ += text;
    if (sink_.back() != '\n') sink_ += '\n';
  }

 private:
  std::string& sink_;
};

}  // namespace QorCliEngine

#endif
