// The plant: its four entry points.

#include <algorithm>
#include <array>
#include <cstddef>

#include "model/child_blocks.h"
#include "model/cooling_loop.h"
#include "model/gas_network.h"
#include "model/inputs.h"
#include "model/outputs.h"
#include "model/power_network.h"
#include "model/signals.h"
#include "model/supervisory_logic.h"
#include "runtime/clock.h"
#include "runtime/nonfinite.h"

namespace {

constexpr bool is_enabled(const StateRow& row) {
  using enum StateRule;
  return row.rule == plain_enabled || row.rule == limit_0_inf_enabled || row.rule == lag_1_enabled;
}

/// The states that belong to a sub-block with an enable input.
constexpr auto kEnabledStates = [] {
  std::array<std::size_t, std::ranges::count_if(kStates, is_enabled)> states{};
  std::size_t count = 0;
  for (std::size_t i = 0; i < kStateCount; ++i) {
    if (is_enabled(kStates[i])) states[count++] = i;
  }
  return states;
}();

void start_states_and_memories() {
  for (std::size_t i = 0; i < kStateCount; ++i) Tessera_X[i] = kStates[i].start.value;
  Tessera_DW.integrators_start = true;
  for (StateSubBlock& sub_block : Tessera_DW.sub_block) sub_block.start = true;
#define MEMORY(id, rate, start, unit, text) Tessera_DW.memory.id = Tessera_B.memory.id = Tessera_B.next.id = start;
#include "model/tables/memories.def"
}

void start_sub_blocks_and_latches() {
  start(Tessera_DW.coolant_condition);
  Tessera_DW.air_sign = Tessera_DW.coolant_sign = 1.0;
  for (PurgeBlock& block : Tessera_DW.purge) Tessera_With_purge_Init(block);
  for (SaturationBlock* block : {&Tessera_DW.ambient_PsatT, &Tessera_DW.exchange_PsatT1, &Tessera_DW.exchange_PsatT2}) {
    Tessera_PsatT_Init(*block);
  }
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
  compressor_memory();
  power_network_memories();
  write_outputs();
  fmu_LogOutput();
  Tessera_DW.integrators_start = false;
  for (const std::size_t i : kEnabledStates) {
    StateSubBlock& sub_block = Tessera_DW.sub_block[i];
    sub_block.start = sub_block.start && !sub_block.active;
  }
  count_battery_energies();
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
  set_up_child_blocks();
  if (!start_child_blocks()) return;
  start_states_and_memories();
  start_sub_blocks_and_latches();
  Tessera_M_.first_initialization = 0;
}

void Tessera_step() {
  if (!is_built()) return;
  begin_evaluation();
  if (is_major_step()) read_memories();

  gas_volumes();                     // states and properties of the gas in all volumes
  pressure_reducer();                // H2_Detendor, heat of the tank
  hydrogen_loop();                   // Ejector, restrictions of the anode
  read_inputs();                     // parameters or own sources, by gate
  power_demand_and_stack_voltage();  // power limiter, voltage law, air flow setpoint
  outside_air();                     // ambient air
  compressor_flow();                 // Electrical_CPR
  supervisory_logic();               // command set, stack power loop, commands
  hydrogen_valves();                 // H2_Valve1, H2_Valve2, hydrogen account
  air_line();                        // restrictions of humidifier and cathode, MoistGasValve
  coolant_volumes();                 // states and properties of the six
  thermal_supervision();             // CoolantCondition, ThermalSupervisor, pump, heater
  radiator();                        // air stream, Air_outRadia, heat exchange
  power_network();                   // converters, loads, vehicle, batteries
  compressor_drive();                // speed lags, outflow
  humidifier_exchange();             // VapEchange1234
  coolant_balances();                // derivatives of the liquid volumes
  stack_gases();                     // reaction and losses of cathode and anode
  gas_balances();                    // derivatives of the gas volumes
  feed_input_lags();                 // lags of the inputs, distance

  if (is_major_step()) finish_major_step();  // outputs, memories, integration
}

void Tessera_terminate() { terminate_child_blocks(); }
