#pragma once

// Drives the one plant of the process, with its inputs opened by hand.

#include <initializer_list>

#include "runtime/clock.h"
#include "runtime/model_store.h"

/// An input whose gate is open, and its parameter.
struct Gate {
  input::Index k;
  double value;
};

inline void open(Gate gate) {
  Tessera_P.real[gate.k] = gate.value;
  Tessera_P.boolean[gate.k] = 1;
}

/// Starts the plant at time 0 with these gates open and all others closed.
inline void start(std::initializer_list<Gate> gates = {}) {
  for (std::size_t k = 0; k < kInputCount; ++k) Tessera_P.real[k] = kInputs[k].start;
  Tessera_P.boolean = {};
  for (const Gate& gate : gates) open(gate);
  Tessera_initialize();
}

/// Goes on until the next model step is that of the given time.
inline void step_to(double time) {
  while (model_time() < time - 0.0005) Tessera_step();
}
