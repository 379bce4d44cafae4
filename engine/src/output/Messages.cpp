#include "output/Messages.h"

#include <unistd.h>

#include <iostream>

#include "output/ControlCharacters.h"

namespace QorCliEngine {

void Messages::show(std::string const& sentence,
                    std::string const& linesBefore) {
  print(linesBefore + "qorcli: " + sentence + '\n');
}

void Messages::print(std::string const& text) {
  bool const atTerminal = ::isatty(STDERR_FILENO) != 0;
  std::cerr << (atTerminal ? ControlCharacters::visible(text) : text)
            << std::flush;
}

}  // namespace QorCliEngine
