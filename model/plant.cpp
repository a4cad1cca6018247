// The plant: its four entry points.

#include "model/inputs.h"
#include "model/outputs.h"
#include "model/signals.h"
#include "runtime/clock.h"
#include "runtime/nonfinite.h"

namespace {

void start_states_and_memories() {
  for (std::size_t i = 0; i < kStateCount; ++i) Tessera_X[i] = kStates[i].start.value;
  Tessera_DW.integrators_start = true;
#define MEMORY(id, rate, start, unit, text) Tessera_DW.memory.id = Tessera_B.memory.id = Tessera_B.next.id = start;
#include "model/tables/memories.def"
}

void read_memories() {
#define MEMORY(id, rate, start, unit, text) \
  if (hits(Rate::rate)) Tessera_B.memory.id = Tessera_DW.memory.id;
#include "model/tables/memories.def"
}

void write_memories() {
#define MEMORY(id, rate, start, unit, text) \
  if (hits(Rate::rate)) Tessera_DW.memory.id = Tessera_B.next.id;
#include "model/tables/memories.def"
}

void finish_major_step() {
  fmu_LogOutput();
  Tessera_DW.integrators_start = false;
  write_memories();
  advance_to_next_step();
}

}  // namespace

void Tessera_initialize() {
  rt_InitInfAndNaN();
  build_model_record();
  Tessera_M_.first_initialization = 1;
  Tessera_B = {};
  Tessera_X = {};
  Tessera_DW = {};
  Tessera_Y = {};
  start_states_and_memories();
  Tessera_M_.first_initialization = 0;
}

void Tessera_step() {
  if (!is_built()) return;
  begin_evaluation();
  if (is_major_step()) read_memories();

  read_inputs();
  feed_input_lags();
  write_outputs();

  if (is_major_step()) finish_major_step();
}

void Tessera_terminate() {}
