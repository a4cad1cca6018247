#include "model/supervisory_logic.h"

#include "model/inputs.h"
#include "model/scalar_laws.h"
#include "model/signals.h"
#include "runtime/clock.h"

namespace {

ControlSignals& control = Tessera_B.control;
CommandSignals& command = Tessera_B.command;
const MemoryValues& memory = Tessera_B.memory;
MemoryValues& next = Tessera_B.next;

constexpr double kBatteryFull = 100.0, kBatteryReady = 95.0;  // percent
constexpr double kSpeedGain = 400.0;                          // rpm per g/s
constexpr double kLargestSpeed = 18000.0;                     // rpm
constexpr double kValveGain = -0.0001;                        // 1/Pa
constexpr double kValveRate = 0.42857142857142855;            // 1/s, of the valve's integrator

void limit_power() {
  if (!hits(Rate::tick_1s)) return;
  const double asked = Tessera_X[state::power_demand] * control.system.run;
  control.limited_power = Tessera_DW.power_limiter_started ? limited_power(asked, memory.limited_power) : asked;
  Tessera_DW.power_limiter_started = true;
  next.limited_power = control.limited_power;
}

void evaluate_stack() {
  StackSignals& stack = Tessera_B.stack;
  if (hits(Rate::tick_1ms)) {
    stack.losses = stack_losses(memory.stack_current);
    stack.flows = reaction_flows(memory.stack_current);
  }
  stack.loss_voltage = stack_loss_voltage(stack.losses, Tessera_X[state::oxygen_access_state]);
  stack.voltage = stack_voltage(stack.loss_voltage);
  stack.heat = selected_stack_heat(memory.stack_current, stack.loss_voltage);
}

/// Electrical power that the system itself takes, by the currents of the step before.
double auxiliary_power() {
  constexpr double kLvBranchGain = -0.0;
  return memory.heater_current * memory.hv_bus_voltage +
         Tessera_B.electrical.compressor_hv_current * memory.hv_bus_voltage + kLvBranchGain * memory.lv_bus_voltage;
}

/// Current that the power target asks for [A]; it decides the air flow only.
double current_setpoint() {
  constexpr double kLargestCurrent = 200.0;  // A
  const double ceiling = current_ceiling(control.power_target + 0.0 * control.auxiliary_power);
  const double net_power = control.measured_power - control.auxiliary_power;
  const double raw = power_pi(Tessera_X[state::current_pi], control.power_target, net_power);
  return saturated(smaller(raw, ceiling), 0.0, kLargestCurrent);
}

/// Samples of the tick, and the command set that follows from them.
void choose_commands() {
  constexpr double kAirOn = 3.0, kAirOff = 2.0;  // g/s
  constexpr double kLeastAnodePressure = 100000.0;
  control.P_GV02A1 = Tessera_B.gas.at[gas_node::GV02A1].state.P;
  control.P_GV02H = Tessera_B.gas.at[gas_node::GV02H].state.P;
  const double air_flow = Tessera_B.compressor.w;
  control.oxygen = oxygen_moles(larger(0.0, air_flow));

  Tessera_DW.air_flows = hysteresis_latch(1000.0 * air_flow, kAirOn, kAirOff, Tessera_DW.air_flows);
  const double ready = stack_ready(Tessera_DW.air_flows, Tessera_B.gas.flow[gas_flow::ejector_outlet].mdot);
  const double available = larger(0.0, Tessera_X[state::air_limited_current]);
  if (control.system.off == 1.0) {
    control.set = commands_when_off(control.system.run);
  } else {
    control.set = {.air_flow = control.air_flow_setpoint,
                   .cathode_pressure = Tessera_X[state::cathode_pressure_setpoint],
                   .anode_pressure = larger(control.P_GV02A1, kLeastAnodePressure),
                   .coolant_temperature = Tessera_X[state::coolant_temperature_setpoint] - 273.15,
                   .current_ceiling = available,
                   .fc_power_target = smaller(ready * control.power_target, Tessera_B.stack.voltage * available),
                   .contact_request = ready,
                   .run = control.system.run};
  }
}

/// Switches the stack power loop, an enabled block that starts at 0 whenever it is entered.
void switch_stack_power_loop() {
  StateSubBlock& loop = Tessera_DW.sub_block[state::stack_power_pi];
  const bool enable = control.set.contact_request == 1.0;
  if (enable && !loop.active) Tessera_X[state::stack_power_pi] = 0.0;
  loop.active = enable;
}

void run_stack_power_loop() {
  control.stack_loop_current = 0.0;
  if (Tessera_DW.sub_block[state::stack_power_pi].active) {
    const double raw = power_pi(Tessera_X[state::stack_power_pi], control.set.fc_power_target, control.measured_power);
    control.stack_loop_current = limited_current(raw, control.set.current_ceiling);
  }
  Tessera_B.u[state::stack_power_pi] = control.stack_loop_current;
}

void command_actuators(double compressor_speed, double back_pressure_valve, double supply_valve) {
  const bool runs = control.set.run != 0.0;
  const double stopping = Tessera_DW.stop_ramp_started ? stopping_speed(memory.compressor_ramp) : 0.0;
  Tessera_DW.stop_ramp_started = true;
  next.compressor_ramp = runs ? compressor_speed : stopping;
  command.compressor_speed = gated(input::compressor_speed, next.compressor_ramp);
  command.back_pressure_valve = gated(input::back_pressure_valve_command, runs ? back_pressure_valve : 1.0);
  command.supply_valve_own = saturated(runs ? supply_valve : 0.0, 0.0, 1.0);
  command.bleed_valve_own = 1.0;  // the bleed is always open
}

}  // namespace

void power_demand_and_stack_voltage() {
  control.system = system_flags(Tessera_B.in.system_command);
  limit_power();
  if (hits(Rate::tick_10ms)) control.power_target = control.limited_power;

  evaluate_stack();
  Tessera_B.electrical.compressor_hv_current =
      memory.compressor_bus_current * Tessera_X[state::compressor_ratio] / memory.compressor_efficiency;
  control.measured_power = Tessera_B.stack.voltage * memory.fc_power_current;
  control.auxiliary_power = auxiliary_power();

  const double current = current_setpoint();
  Tessera_B.u[state::current_pi] = current;

  Tessera_B.electrical.hv_soc = state_of_charge(kHvBattery, Tessera_X[state::hv_charge]);
  if (hits(Rate::tick_1ms)) {
    Tessera_DW.battery_full =
        hysteresis_latch(100.0 * Tessera_B.electrical.hv_soc, kBatteryFull, kBatteryReady, Tessera_DW.battery_full);
  }
  control.air_flow_setpoint = air_flow_setpoint(current, Tessera_X[state::stoichiometry], Tessera_DW.battery_full);
}

void supervisory_logic() {
  const bool tick = hits(Rate::tick_10ms);
  if (tick) {
    choose_commands();
    switch_stack_power_loop();
    const double air_error = 1000.0 * control.set.air_flow - 1000.0 * Tessera_B.compressor.w;  // g/s
    control.speed_proportional = kSpeedGain * air_error;
    control.valve_proportional = kValveGain * (control.set.cathode_pressure - control.P_GV02A1);
    control.anode_error = 1e-5 * (control.set.anode_pressure - control.P_GV02H);
  }
  Tessera_B.u[state::air_limited_current] = air_limited_current(control.oxygen, Tessera_X[state::stoichiometry]);
  run_stack_power_loop();

  const double speed = saturated(Tessera_X[state::compressor_pi] + control.speed_proportional, 0.0, kLargestSpeed);
  const double back_pressure =
      saturated(kValveRate * Tessera_X[state::MoistGasValve_control] + control.valve_proportional, 0.0, 1.0);
  const double supply = saturated(Tessera_X[state::H2_Valve1_control] + control.anode_error, 0.0, 1.0);
  Tessera_B.u[state::compressor_pi] = speed;
  Tessera_B.u[state::MoistGasValve_control] = back_pressure;
  Tessera_B.u[state::H2_Valve1_control] = supply;

  if (tick) {
    control.stack_current = control.system.run != 0.0 ? control.stack_loop_current : 0.0;
    command_actuators(speed, back_pressure, supply);
  }
  if (is_major_step()) {
    command.supply_valve = gated(input::supply_valve_command, command.supply_valve_own);
    command.bleed_valve = gated(input::bleed_valve_command, command.bleed_valve_own);
  }
}
