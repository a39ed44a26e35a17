// Ctrl-C as a flag.
#include "host/interrupt.hpp"

namespace ravelinox::host {
namespace {

volatile std::sig_atomic_t signal_seen = 0;

void note_signal(int) { signal_seen = 1; }

}  // namespace

InterruptGuard::InterruptGuard() {
  signal_seen = 0;
  struct sigaction action {};
  action.sa_handler = note_signal;
  sigaction(SIGINT, &action, &previous_interrupt_);
  sigaction(SIGTERM, &action, &previous_terminate_);
}

InterruptGuard::~InterruptGuard() {
  sigaction(SIGINT, &previous_interrupt_, nullptr);
  sigaction(SIGTERM, &previous_terminate_, nullptr);
}

bool interrupted() { return signal_seen != 0; }

}  // namespace ravelinox::host
