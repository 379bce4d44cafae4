#ifndef QOR_CLI_ENGINE_MESSAGES_H
#define QOR_CLI_ENGINE_MESSAGES_H

#include <string>

namespace QorCliEngine {

// What the engine tells the operator, on standard error. At a terminal, control
// characters are made visible: messages hold words of others.
namespace Messages {

// Shows a sentence after the engine's name, and before it lines that end with
// line feeds, if there are any.
void show(std::string const& sentence, std::string const& linesBefore = "");

// Shows a text of another kind.
void print(std::string const& text);

}  // namespace Messages
}  // namespace QorCliEngine

#endif
