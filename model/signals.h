#pragma once

/// The signals of the plant: what its blocks hand to each other in an evaluation (Tessera_B), and what they keep
/// from step to step (Tessera_DW).

#include <array>

#include "model/ambient_air.h"
#include "model/columns.h"
#include "model/coolant_restriction.h"
#include "model/electrical_network.h"
#include "model/enabled_blocks.h"
#include "model/liquid_volume.h"
#include "model/moist_gas_volume.h"
#include "model/power_control.h"
#include "model/stack.h"
#include "model/tables/catalogue.h"
#include "model/tables/child_blocks.h"
#include "model/thermal_supervision.h"

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
  Columns<MoistGas, kGasNodeCount> at;           ///< the gas at each node
  std::array<double, kGasNodeCount> Cv_dry;      ///< at constant volume per kg of dry gas, where asked for [J/(kg K)]
  Columns<GasContent, kVolumeCount> content;     ///< of each volume
  std::array<MoistGasFlow, kGasFlowCount> flow;  ///< the flows into the nodes
  AmbientConditions ambient_conditions;          ///< that the ambient air was last computed for
  bool ambient_changes;                          ///< whether this evaluation computed it anew
  AmbientAir ambient;
};

struct StackSignals {
  StackLosses losses;            ///< of the present major step
  ReactionFlows flows;           ///< of the present major step
  double loss_voltage, voltage;  ///< V
  double heat;                   ///< W
};

/// The controller.
struct ControlSignals {
  SystemFlags system;
  double limited_power;      ///< W, since the last tick of 1 s
  double power_target;       ///< W, since the last tick of 10 ms
  double measured_power;     ///< W, by the stack current of the step before
  double auxiliary_power;    ///< W
  double air_flow_setpoint;  ///< kg/s

  // Samples of the tick of 10 ms.
  double P_GV02A1, P_GV02H;  ///< Pa
  double oxygen;             ///< mol/s in the measured air flow
  CommandSet set;
  double speed_proportional;  ///< of the compressor's speed control [rpm]
  double valve_proportional;  ///< of the back-pressure valve's control
  double anode_error;         ///< bar

  double stack_loop_current;  ///< output of the stack power loop [A]
  double stack_current;       ///< command of the fuel cell DC/DC, since the last tick of 10 ms [A]
};

/// Commands: the controller's own values, which stand until its next tick of 10 ms, and those in force.
struct CommandSignals {
  double compressor_speed;     ///< rpm
  double back_pressure_valve;  ///< 0 to 1
  double supply_valve_own, supply_valve;
  double bleed_valve_own, bleed_valve;
  double fan_own, fan;
  double heater_own, heater;
  double radiator_own, radiator;
  double pump_own, pump;
  double fc_enable_own, fc_enable;
  double lv_enable_own, lv_enable;
  double compressor_enable_own, compressor_enable;
};

struct CompressorSignals {
  double duty;         ///< share of the free speed
  double w;            ///< air flow [kg/s]
  double bus_voltage;  ///< V
  double h1, h2;       ///< of the outlet's slots at T_enthalpy [J/kg]
  double T_enthalpy;   ///< K
};

struct CoolingSignals {
  double T_out, T_in, T_amb, T_set;              ///< since the last tick of 10 ms [degC]
  double T_set_slow, T_out_slow, T_amb_slow;     ///< since the last tick of 100 ms [degC]
  ThermalDemand demand;                          ///< since the last tick of 100 ms
  std::array<double, coolant_flow::count> flow;  ///< kg/s
  double air_speed;                              ///< at the radiator [km/h]
  double air_flow;                               ///< through the radiator [kg/s]
  double radiator_heat;                          ///< into the coolant [W]
  double heater_power;                           ///< ahead of its lag, since the last tick of 10 ms [W]
};

struct ElectricalSignals {
  double fc_current, fc_hv_current;                             ///< of the fuel cell DC/DC: stack side, HV side [A]
  double lv_hv_current, lv_lv_current;                          ///< of the LV DC/DC: HV side, LV side [A]
  double compressor_hv_current;                                 ///< of the compressor DC/DC [A]
  double hv_auxiliary_current, lv_load_current, drive_current;  ///< A
  RoadLoad road;                                                ///< since the last tick of 10 ms
  double hv_battery_current, lv_battery_current;                ///< positive when it discharges [A]
  double hv_soc, lv_soc;                                        ///< 0 to 1
};

/// Results of a restriction's pressure drop block, which nothing reads.
struct LiquidRestrictionSignals {
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
  StackSignals stack;
  ControlSignals control;
  CommandSignals command;
  CompressorSignals compressor;
  CoolingSignals cooling;
  ElectricalSignals electrical;
  Columns<LiquidPort, kLiquidCount> liquid;
  std::array<std::array<double, 13>, kLiquidCount> liquid_vector;  ///< of the property blocks, which no step runs
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
  bool power_limiter_started, stop_ramp_started;
  bool battery_full, air_flows, lv_full;  ///< latches
  double air_sign, coolant_sign;          ///< of the flows through the radiator
  std::array<FlowLawBlock, kLiquidRestrictionCount> aQB, DTAQfCv;
  CoolantCondition coolant_condition;
  ThermalSupervisor supervisor;
  ThermalLaw thermal_law;
  double hv_energy, lv_energy;  ///< discharged since the start [J]
  MemoryValues memory;          ///< as written at their last tick
};

extern Signals Tessera_B;
extern DiscreteWork Tessera_DW;
