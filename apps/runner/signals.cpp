#include "apps/runner/signals.h"

#include <signal.h>

#include <initializer_list>

namespace runner {
namespace {

volatile sig_atomic_t g_signal = 0;

extern "C" void note_signal(int signal) {
  if (g_signal == 0) g_signal = signal;
}

}  // namespace

void note_ending_signals() {
  struct sigaction action = {};
  action.sa_handler = &note_signal;
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

int noted_signal() { return g_signal; }

}  // namespace runner
