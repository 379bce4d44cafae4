#include "output/Messages.h"

#include <unistd.h>

#include <iostream>

#include "output/ControlCharacters.h"

namespace QorCliEngine {

void Messages::show(std::string const& sentence,
                    std::string const& linesBefore) {
  std::string const text = linesBefore + "qorcli: " + sentence + '\n';
  bool const atTerminal = ::isatty(STDERR_FILENO) != 0;
  std::cerr << (atTerminal ? ControlCharacters::visible(text) : text)
            << std::flush;
}

}  // namespace QorCliEngine
