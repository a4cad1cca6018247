#include "model/power_network.h"

#include "model/electrical_network.h"
#include "model/inputs.h"
#include "model/signals.h"
#include "runtime/clock.h"

namespace {

ElectricalSignals& electrical = Tessera_B.electrical;
CommandSignals& command = Tessera_B.command;
const MemoryValues& memory = Tessera_B.memory;
MemoryValues& next = Tessera_B.next;
StateVector& x = Tessera_X;
auto& u = Tessera_B.u;

constexpr double kRatedLvVoltage = 13.5, kRatedCompressorVoltage = 48.0;  // V

bool is_on(double enable) { return enable >= 0.5; }

/// Derivative of a converter's current, which follows the negated command with 0.1 s.
double converter_lag(double wanted, double current) { return 10.0 * (-wanted - current); }

void enable_converters() {
  electrical.lv_soc = state_of_charge(kLvBattery, x[state::lv_charge]);
  if (hits(Rate::tick_1ms)) Tessera_DW.lv_full = hysteresis_latch(electrical.lv_soc, 1.0, 0.8, Tessera_DW.lv_full);
  if (hits(Rate::tick_10ms)) {
    const bool off = Tessera_B.control.system.run != 1.0;
    command.fc_enable_own = off ? 0.0 : Tessera_B.control.set.contact_request;
    command.lv_enable_own = Tessera_DW.lv_full ? 0.0 : 1.0;
    command.compressor_enable_own = off ? 0.0 : 1.0;
  }
  if (is_major_step()) {
    command.fc_enable = gated(input::fc_converter_enable, command.fc_enable_own);
    command.lv_enable = gated(input::lv_converter_enable, command.lv_enable_own);
    command.compressor_enable = gated(input::compressor_converter_enable, command.compressor_enable_own);
  }
}

void fuel_cell_converter() {
  const double wanted = Tessera_B.control.stack_current;
  for (const state::Index current : {state::fc_converter_current, state::fc_converter_current_copy}) {
    u[current] = converter_lag(wanted, x[current]);
  }
  electrical.fc_current = is_on(command.fc_enable) ? x[state::fc_converter_current] : 0.0;
  electrical.fc_hv_current =
      Tessera_B.stack.voltage * electrical.fc_current * memory.fc_efficiency / memory.hv_bus_voltage;
}

void lv_converter() {
  electrical.lv_hv_current = is_on(command.lv_enable) ? x[state::lv_converter_current] : 0.0;
  electrical.lv_lv_current =
      memory.hv_bus_voltage * electrical.lv_hv_current * memory.lv_efficiency / memory.lv_bus_voltage;
  const double target = converter_target(kRatedLvVoltage, memory.hv_bus_voltage, electrical.lv_lv_current);
  const double raw = voltage_control(x[state::lv_converter_pi], target - memory.lv_bus_voltage);
  const double wanted = lv_converter_output(raw, memory.lv_bus_voltage);
  u[state::lv_converter_pi] = wanted;
  for (const state::Index current : {state::lv_converter_current, state::lv_converter_current_copy}) {
    u[current] = converter_lag(wanted, x[current]);
  }
}

void compressor_converter() {
  const double target = converter_target(kRatedCompressorVoltage, memory.hv_bus_voltage, memory.compressor_bus_current);
  const double error = target - Tessera_B.compressor.bus_voltage;
  const double ratio = compressor_converter_ratio(voltage_control(x[state::compressor_converter_pi], error));
  u[state::compressor_converter_pi] = ratio;
  u[state::compressor_ratio] = 10.0 * ((is_on(command.compressor_enable) ? ratio : 0.0) - x[state::compressor_ratio]);
}

void loads() {
  const double hv = memory.hv_bus_voltage, lv = memory.lv_bus_voltage;
  electrical.hv_auxiliary_current =
      constant_power_current(Tessera_B.in.hv_auxiliary_power, hv, x[state::hv_auxiliary_lag]);
  electrical.lv_load_current = constant_power_current(Tessera_B.in.lv_load_power, lv, x[state::lv_load_lag]);
  u[state::hv_auxiliary_lag] = hv;
  u[state::lv_load_lag] = lv;

  if (hits(Rate::tick_10ms)) electrical.road = road_load(x[state::vehicle_speed], x[state::road_slope]);
  electrical.drive_current = drive_current(electrical.road, x[state::wind_speed], x[state::vehicle_speed_lag], hv);
  u[state::vehicle_speed_lag] = electrical.road.v;
}

struct Battery {
  const BatteryLayout& layout;
  CellSource (*source)(double soc_percent);
  CellRcElement (*rc_element)(double soc_percent);
  state::Index charge, soc_lag, rc_voltage;
};
constexpr Battery kHv = {kHvBattery,       hv_source,         hv_rc_element,
                         state::hv_charge, state::hv_soc_lag, state::hv_rc_voltage};
constexpr Battery kLv = {kLvBattery,       lv_source,         lv_rc_element,
                         state::lv_charge, state::lv_soc_lag, state::lv_rc_voltage};

/// @param soc  state of charge, 0 to 1
/// @return     current, positive when it discharges [A]
double run_battery(const Battery& battery, double into_battery, double soc) {
  const double current = -into_battery;
  u[battery.charge] = into_battery / battery.layout.strings;
  u[battery.soc_lag] = soc - x[battery.soc_lag];
  u[battery.rc_voltage] =
      rc_voltage_rate(battery.rc_element(100.0 * x[battery.soc_lag]), current, x[battery.rc_voltage]);
  return current;
}

double bus_voltage(const Battery& battery, double current) {
  return battery_voltage(battery.layout, battery.source(100.0 * x[battery.soc_lag]), current, x[battery.rc_voltage]);
}

void batteries() {
  // The heater's current enters with a plus: two inversions of its branch make it charge the balance.
  const double into_hv = -electrical.fc_hv_current + electrical.lv_hv_current + electrical.drive_current +
                         -electrical.hv_auxiliary_current + -electrical.compressor_hv_current + memory.heater_current;
  const double into_lv = -electrical.lv_load_current + -0.0 + -electrical.lv_lv_current;
  electrical.hv_battery_current = run_battery(kHv, into_hv, electrical.hv_soc);
  electrical.lv_battery_current = run_battery(kLv, into_lv, electrical.lv_soc);
}

}  // namespace

void power_network() {
  enable_converters();
  fuel_cell_converter();
  lv_converter();
  compressor_converter();
  loads();
  batteries();
}

void power_network_memories() {
  next.stack_current = next.fc_power_current = -electrical.fc_current;
  next.fc_efficiency = converter_efficiency(electrical.fc_hv_current);
  next.lv_efficiency = converter_efficiency(electrical.lv_lv_current);
  next.compressor_efficiency = compressor_converter_efficiency(electrical.compressor_hv_current);
  next.heater_current = heater_bus_current(Tessera_B.cooling.heater_power, memory.hv_bus_voltage);
  next.hv_bus_voltage = bus_voltage(kHv, electrical.hv_battery_current);
  next.lv_bus_voltage = bus_voltage(kLv, electrical.lv_battery_current);
}

void count_battery_energies() {
  if (!hits(Rate::tick_10ms)) return;
  Tessera_DW.hv_energy += 0.01 * memory.hv_bus_voltage * electrical.hv_battery_current;
  Tessera_DW.lv_energy += 0.01 * memory.lv_bus_voltage * electrical.lv_battery_current;
}
