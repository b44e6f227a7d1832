#include "run/batch/interrupt.hpp"

#include <csignal>
#include <initializer_list>

namespace velmora {
namespace {

volatile std::sig_atomic_t caught = 0;

void Remember(int signal) {
  caught = signal;
}

void Catch(int signal) {
  struct sigaction action {};
  sigaction(signal, nullptr, &action);
  if (action.sa_handler == SIG_IGN) {
    return;
  }
  action = {};
  action.sa_handler = Remember;
  // A second signal ends the program at once, should it be deep in a calculation.
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(signal, &action, nullptr);
}

}  // namespace

void CatchInterrupts() {
  caught = 0;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    Catch(signal);
  }
}

int InterruptSignal() {
  return caught;
}

void LeaveInterruptsToParent() {
  caught = 0;
  std::signal(SIGINT, SIG_IGN);
  std::signal(SIGHUP, SIG_IGN);
  Catch(SIGTERM);
}

}  // namespace velmora
