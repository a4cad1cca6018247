#pragma once

/// The signals of the plant: what its blocks hand to each other within an evaluation (Tessera_B), and what they keep
/// from step to step (Tessera_DW).

#include <array>

#include "model/tables/catalogue.h"

/// The inputs of the model in force in this evaluation: parameter or own source, by gate, in model units.
struct InputsInForce {
#define INPUT(component, quantity, ...) double component##_##quantity;
#include "model/tables/inputs.def"
  double stoichiometry;  ///< has no parameter; from its table
};

/// One value of each memory.
struct MemoryValues {
#define MEMORY(id, ...) double id;
#include "model/tables/memories.def"
};

/// Block signals.
struct Signals {
  InputsInForce in;
  MemoryValues memory;                      ///< the memories as read at their last tick
  MemoryValues next;                        ///< what the memories take over at their next tick
  std::array<double, kStateCount> u;        ///< what each state's integrator takes in
  std::array<double, kOutputCount> sample;  ///< held samples of the outputs that are computed on a tick
};

/// Discrete work.
struct DiscreteWork {
  bool integrators_start;                          ///< true in the first major step: blocks set their states
  std::array<bool, kStateCount> sub_block_active;  ///< of the states whose rule is an enabled one
  MemoryValues memory;                             ///< as written at their last tick
};

extern Signals Tessera_B;
extern DiscreteWork Tessera_DW;
