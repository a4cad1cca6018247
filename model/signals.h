#pragma once

/// The signals of the plant: what its blocks hand to each other within an evaluation (Tessera_B), and what they keep
/// from step to step (Tessera_DW).

#include <array>

#include "model/ambient_air.h"
#include "model/enabled_blocks.h"
#include "model/moist_gas_volume.h"
#include "model/tables/catalogue.h"
#include "model/tables/child_blocks.h"

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

/// The gas network.
struct GasSignals {
  std::array<MoistGas, kGasNodeCount> at;        ///< the gas at each node
  std::array<GasContent, kVolumeCount> content;  ///< of each volume
  std::array<MoistGasFlow, kGasFlowCount> flow;  ///< the flows into the nodes
  AmbientAir ambient;
};

/// The actuators' commands. The controller's own values stand until their next 10 ms tick.
struct CommandSignals {
  double compressor_speed;     ///< in force [rpm]
  double back_pressure_valve;  ///< in force
  double supply_valve_own, bleed_valve_own;
  double supply_valve, bleed_valve;  ///< in force
};

struct CompressorSignals {
  double duty;         ///< share of the free speed
  double w;            ///< air flow [kg/s]
  double bus_voltage;  ///< V
  double h1, h2;       ///< of the outlet's slots at T_enthalpy [J/kg]
  double T_enthalpy;   ///< K
};

/// A liquid volume's property block.
struct LiquidSignals {
  double T, P;
  std::array<double, 13> vector;
};

struct LiquidRestrictionSignals {
  double A, D, ksi, beta, Re_crit, Cq;
  double v, mu, Cp, Cv, T;
  double P1, P2;
  double Qm, Qv, Re;
};

struct HeatExchangerSignals {
  double flow1, Cp1, T1, UA, flow2, Cp2, T2;
  double Q, Qmax, effectiveness, NTU;
  std::array<double, 2> capacity_heat;
};

/// Block signals.
struct Signals {
  InputsInForce in;
  MemoryValues memory;  ///< the memories as read at their last tick
  MemoryValues next;    ///< what the memories take over at their next tick
  GasSignals gas;
  CommandSignals command;
  CompressorSignals compressor;
  std::array<LiquidSignals, kLiquidCount> liquid;
  std::array<LiquidRestrictionSignals, kLiquidRestrictionCount> liquid_restriction;
  HeatExchangerSignals heat_exchanger;
  double hydrogen_mass;                     ///< in the tank [kg]
  std::array<double, kStateCount> u;        ///< what each state's integrator takes in
  std::array<double, kOutputCount> sample;  ///< held samples of the outputs that are computed on a tick
};

/// Discrete work.
struct DiscreteWork {
  bool integrators_start;                            ///< true in the first major step: blocks set their states
  std::array<StateSubBlock, kStateCount> sub_block;  ///< of the states whose rule is an enabled one
  std::array<PurgeBlock, kVolumeCount> purge;        ///< vapour limiter of each volume
  SaturationBlock ambient_PsatT, exchange_PsatT1, exchange_PsatT2;
  bool hydrogen_latched;
  double hydrogen_at_start;  ///< mass in the tank at the first 10 ms tick [kg]
  MemoryValues memory;       ///< as written at their last tick
};

extern Signals Tessera_B;
extern DiscreteWork Tessera_DW;
