#include "system/Interrupts.h"

#include <csignal>
#include <initializer_list>

namespace QorCliEngine {
namespace {

bool caught = false;
volatile std::sig_atomic_t interrupted = 0;
volatile std::sig_atomic_t ended = 0;
volatile std::sig_atomic_t resized = 0;
volatile std::sig_atomic_t continued = 0;

extern "C" void noteSignal(int signal) {
  switch (signal) {
    case SIGINT:
      interrupted = 1;
      break;
    case SIGWINCH:
      resized = 1;
      break;
    case SIGCONT:
      continued = 1;
      break;
    default:
      ended = 1;
  }
}

bool takeFlag(volatile std::sig_atomic_t& flag) {
  if (flag == 0) return false;
  flag = 0;
  return true;
}

}  // namespace

void Interrupts::install() {
  struct sigaction action {};
  action.sa_handler = noteSignal;
  sigemptyset(&action.sa_mask);
  for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGWINCH, SIGCONT}) {
    sigaction(signal, &action, nullptr);
  }
  caught = true;
}

bool Interrupts::installed() { return caught; }

bool Interrupts::requested() { return interrupted != 0 || leaving(); }
bool Interrupts::take() { return takeFlag(interrupted); }
bool Interrupts::leaving() { return ended != 0; }
bool Interrupts::pending() {
  return requested() || resized != 0 || continued != 0;
}
bool Interrupts::takeResized() { return takeFlag(resized); }
bool Interrupts::takeContinued() { return takeFlag(continued); }

}  // namespace QorCliEngine
